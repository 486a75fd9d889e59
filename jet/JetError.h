#pragma once
// What goes wrong in the embedded database engine, with the numbers that DAO gives.
#include "base/trap.h"

namespace velora {

namespace jeterr {
inline constexpr long kInvalidArgument = 3001;
inline constexpr long kTableExists = 3010;
inline constexpr long kObjectMissing = 3011;
inline constexpr long kNoSuchIndex = 3015;
inline constexpr long kNoCurrentIndex = 3019;
inline constexpr long kUpdateWithoutEdit = 3020;
inline constexpr long kNoCurrentRecord = 3021;
inline constexpr long kDuplicateKey = 3022;
inline constexpr long kFileMissing = 3024;
inline constexpr long kTransaction = 3034; ///< commit or rollback without a begin
inline constexpr long kTooLarge = 3035;    ///< the file or one transaction has reached its limit
inline constexpr long kDiskError = 3043;
inline constexpr long kBadPath = 3044;
inline constexpr long kInUse = 3045;
inline constexpr long kDamaged = 3049; ///< damaged, or no Jet 4 database
inline constexpr long kCannotOpen = 3051;
inline constexpr long kNullInKey = 3058;
inline constexpr long kTableMissing = 3078;
inline constexpr long kAccessDenied = 3112; ///< the engine's own tables cannot be changed
inline constexpr long kBadName = 3125;
inline constexpr long kTooLong = 3163;
inline constexpr long kRecordDeleted = 3167;
inline constexpr long kTooManyFields = 3190;
inline constexpr long kFieldTwice = 3191;
inline constexpr long kDatabaseExists = 3204;
inline constexpr long kNotSupported = 3251; ///< valid Jet, but nothing this engine can write
inline constexpr long kBadFieldType = 3259;
inline constexpr long kItemMissing = 3265;
inline constexpr long kRequired = 3314;
inline constexpr long kZeroLength = 3315;
inline constexpr long kClosed = 3420;
inline constexpr long kConversion = 3421;
} // namespace jeterr

class JetError : public Error {
public:
    JetError(long number, const char* reason) : Error(reason, static_cast<unsigned long>(number)) {}
    /// DAO's number, one of jeterr.
    long number() const noexcept { return static_cast<long>(code()); }
};

namespace jet {
/// The file does not hold together: DAO's 3049.
[[noreturn]] inline void damaged(const char* what)
{
    throw JetError(jeterr::kDamaged, what);
}
inline void require(bool holds, const char* what)
{
    if (!holds)
        damaged(what);
}
} // namespace jet
} // namespace velora
