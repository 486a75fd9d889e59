#pragma once
// The program's description database, and what other windows ask of it.
#include "sounds/clsDatabase.h"

namespace velora {

/// The one database, "\data\wav descriptions.mdb" in the program folder. Closed until start-up has
/// opened it.
clsDatabase& wavDatabase();
/// Opens it at start-up. What is wrong with it is told and mended where it can be; pumps then.
void openWavDatabase();
/// Before COM goes.
void closeWavDatabase();
/// Gives the wav list what it asks of the descriptions; before any window is opened.
void routeDescriptions();

} // namespace velora
