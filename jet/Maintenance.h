#pragma once
// Compacting and repairing: both write a new file and put it in place when it is complete.
#include "jet/clsJetDatabase.h"

namespace velora::jet {

void compact(JetFiles& files, const std::wstring& source, const std::wstring& destination);
clsJetDatabase::Repaired repair(JetFiles& files, const std::wstring& path, const JetTable* usual);

} // namespace velora::jet
