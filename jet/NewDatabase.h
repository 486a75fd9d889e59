#pragma once
// An empty database: the sixteen pages that every file begins with.
#include "jet/TableDef.h"

namespace velora::jet {

/// Fills an empty file.
void makeNewDatabase(Pager& pager);
/// The definition of MSysObjects as every file has it, for files whose own cannot be read.
TableDef standardObjectsDef();

} // namespace velora::jet
