#pragma once
// Which messages a slot wants, and which messages belong to one press of a key or button. Pure, so
// that the tests reach it without a window; the message numbers are written out for that reason.
#include "hook/wire.h"

namespace velora::agent {

constexpr bool holds(const wire::Rule& rule, std::uint32_t message, std::uint32_t wParam)
{
    return rule.message == message && wParam >= rule.wLow && wParam <= rule.wHigh;
}

/// False for a slot that the agent must not take: too many rules, or a rule with no or two ways.
constexpr bool sound(const wire::Slot& slot)
{
    if (!slot.window || !slot.cookie || slot.ruleCount > wire::kRulesPerSlot)
        return false;
    for (std::uint32_t i = 0; i < slot.ruleCount; ++i) {
        const std::uint32_t mode = slot.rules[i].mode;
        const std::uint32_t way = mode & ~std::uint32_t{wire::kCoalesce | wire::kWithControl};
        if (way != wire::kVerdict && way != wire::kPostedBefore && way != wire::kPostedAfter)
            return false;
        if ((mode & wire::kWithControl) && way != wire::kVerdict)
            return false;
    }
    return true;
}

/// The messages that one press brings about. AOL differs in which of them makes it act on Enter, so
/// what is swallowed is swallowed from the press to the release, and whoever was asked at the press
/// is not asked again at the character.
class PressPair {
public:
    struct FollowUp {
        bool swallow = false;
        std::uint32_t asked = 0; ///< slots that answered at the press
    };

    /// At each message, before anyone is asked. `queued` is false for a message that another
    /// process sent: the program's own Enter is no part of the user's press.
    constexpr FollowUp next(std::uint32_t message, std::uint32_t wParam, bool queued)
    {
        if (isPress(message)) {
            *this = {};
            return {};
        }
        if (!queued)
            return {};
        if (isCharacter(message) && awaitsCharacter_ && mayGive(key_, wParam)) {
            awaitsCharacter_ = false;
            return {swallowed_, asked_};
        }
        if (awaitsRelease_ && isRelease(message) && keyOf(message, wParam) == key_) {
            // The character may still come: a posted press and release overtake it.
            awaitsRelease_ = false;
            return {swallowed_, 0};
        }
        return {};
    }

    /// After a press was put before the slots in `asked`.
    constexpr void pressed(std::uint32_t message, std::uint32_t wParam, std::uint32_t asked,
                           bool swallowed)
    {
        if (!isPress(message) || !asked)
            return;
        key_ = keyOf(message, wParam);
        awaitsCharacter_ = message == kKeyDown || message == kSysKeyDown;
        awaitsRelease_ = true;
        asked_ = asked;
        swallowed_ = swallowed;
    }

private:
    static constexpr std::uint32_t kKeyDown = 0x100, kKeyUp = 0x101, kChar = 0x102,
                                   kDeadChar = 0x103, kSysKeyDown = 0x104, kSysKeyUp = 0x105,
                                   kSysChar = 0x106, kSysDeadChar = 0x107;
    static constexpr std::uint32_t kLeftDown = 0x201, kLeftUp = 0x202, kLeftDouble = 0x203;
    static constexpr std::uint32_t kLeftButton = 1; // VK_LBUTTON

    static constexpr bool isMouse(std::uint32_t m) { return m >= kLeftDown && m <= kLeftDouble; }
    static constexpr bool isPress(std::uint32_t m)
    {
        return m == kKeyDown || m == kSysKeyDown || m == kLeftDown || m == kLeftDouble;
    }
    static constexpr bool isRelease(std::uint32_t m)
    {
        return m == kKeyUp || m == kSysKeyUp || m == kLeftUp;
    }
    static constexpr bool isCharacter(std::uint32_t m)
    {
        return m == kChar || m == kDeadChar || m == kSysChar || m == kSysDeadChar;
    }
    static constexpr std::uint32_t keyOf(std::uint32_t message, std::uint32_t wParam)
    {
        return isMouse(message) ? kLeftButton : wParam;
    }

    /// Enter and space give known characters (Enter with Ctrl a line feed); of other keys the
    /// keyboard layout decides.
    static constexpr bool mayGive(std::uint32_t key, std::uint32_t character)
    {
        return key == 13 ? character == 13 || character == 10 : key != 32 || character == 32;
    }

    std::uint32_t key_ = 0;
    std::uint32_t asked_ = 0;
    bool awaitsCharacter_ = false;
    bool awaitsRelease_ = false;
    bool swallowed_ = false;
};

} // namespace velora::agent
