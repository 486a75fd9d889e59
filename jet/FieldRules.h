#pragma once
// The properties of a table's fields that its definition has no room for; they are a long value
// beside its name in the catalogue.
#include "jet/Page.h"

#include <vector>

namespace velora::jet {

struct FieldRule {
    std::wstring field;
    bool allowZeroLength = true;
    bool required = false;
};

/// What is not there keeps its default; a value that cannot be read gives no rules.
std::vector<FieldRule> readFieldRules(std::string_view properties);
std::string renderFieldRules(const std::vector<FieldRule>& rules);

} // namespace velora::jet
