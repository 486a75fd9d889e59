#pragma once
// The names by which the tests and their DAO server know each other.

namespace velora::test {

inline constexpr wchar_t kDaoServerClass[] = L"{6E1B5A2C-40F3-4E0B-9D1C-7A52C6D0B913}";
/// Set in the process: the engine has no RepairDatabase.
inline constexpr wchar_t kNoRepairVariable[] = L"VELORA_TEST_DAO_NO_REPAIR";

} // namespace velora::test
