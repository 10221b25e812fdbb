#include "common/ui/ListObject.h"
#include "common/RunError.h"

#include <gtest/gtest.h>

namespace tallyroom {
namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

// What a host may do with a list that it is given.
TEST(ListObject, AnswersAsAListControlDoes) {
    auto widget = std::make_unique<QListWidget>();
    const ObjectRef list = makeObject<ListObject>(widget.get());
    for (const char* entry : {"gone", "one", "two", "three"})
        list.call(text("AddItem"), {Variant(text(entry))});
    list.call(text("Clear"));
    for (const char* entry : {"one", "two", "three"})
        list.call(text("AddItem"), {Variant(text(entry))});
    list.call(text("RemoveItem"), {Variant(1)});
    EXPECT_EQ(list.property(text("ListCount")).toLong(), 2);
    EXPECT_EQ(list.property(text("List"), {Variant(1)}).toText(), text("three"));
    widget->setCurrentRow(1);
    EXPECT_EQ(list.property(text("ListIndex")).toLong(), 1);
    for (const int outside : {-1, 2}) {
        EXPECT_THROW(list.property(text("List"), {Variant(outside)}), RunError);
        EXPECT_THROW(list.call(text("RemoveItem"), {Variant(outside)}), RunError);
    }
    widget.reset();
    EXPECT_THROW(list.call(text("Clear")), RunError) << "the window has gone";
}

} // namespace
} // namespace tallyroom
