#include "StoreFixture.h"
