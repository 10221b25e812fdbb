// Where what belongs to the program lies: beside it in the folder of a build, where it was
// installed otherwise. Whether it is there is not looked at. Needs an application object.
#pragma once

#include <QString>

namespace tallyroom::host::Places {

QString module();        // the add-in's, tallyroom.so
QString guide();         // usage.md; its pictures lie beside it
QString oldFileReader(); // a program: see OldFileProcess

} // namespace tallyroom::host::Places
