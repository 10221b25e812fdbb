// Opening and making the files of a site on a server.
#pragma once

#include "store/Database.h"
#include "store/Schema.h"
#include "store/engine/CopySearch.h"
#include "store/engine/FileCompletion.h"

namespace tallyroom {

// Of the server's library: "15.14"; "" in a program that was built without it.
QString postgresVersion();

// The file of that address, which isServerAddress(). Raises 3044 and 3024 as parseServerAddress()
// does, 3024 for a site that is not there, 3343 for a database that this program has not prepared,
// and what hinders a connection: 3151, 3029, 3033. A program that was built without the server's
// library raises 3151.
std::shared_ptr<Database> openOnServer(const QString& path, WhenInUse answer,
                                       CopySearchMaker maker);

// Makes files of the site at the address of its folder, prepares the database for this version of
// the program, and lets `fill` write rows. All of it is there afterwards or nothing. Raises 3204
// for a site that is there already, 3033 for who may not make it, and what hinders a connection.
void createSite(const QString& path, const std::function<void()>& fill,
                std::span<const Schema::File> files);

// Adds to a file of a site what it lacks, all or nothing. Raises 3033 for who does not own it, and
// what hinders a connection.
void completeOnServer(const QString& path, const FileCompletion& completion);

} // namespace tallyroom
