#pragma once
// Rules on AOL's texts that the agent applies where it reads them. Pure; `Unit` is a UTF-16 unit.

namespace velora::agent {

struct LineEnd {
    int units; ///< length without the line end
    bool softWrapped;
};

/// What EM_GETLINE gave for a display line. A hard-ended one comes with CR (or LF, VT), a
/// soft-wrapped one with the blank at which it was broken, or with nothing when it had none. An
/// edit control gives no line end at all: `hardEnded` says what the line positions say about that.
template <class Unit>
constexpr LineEnd splitLineEnd(const Unit* line, int units, bool last, bool hardEnded)
{
    const int before = units;
    while (units > 0 && (line[units - 1] == '\r' || line[units - 1] == '\n'))
        --units;
    if (units == before && units > 0 && line[units - 1] == '\v')
        --units;
    if (units != before || last || hardEnded)
        return {units, false};
    if (units > 0 && line[units - 1] == ' ')
        --units;
    return {units, true};
}

template <class Unit>
constexpr Unit lowerUnit(Unit c)
{
    const bool latin1 = c >= 0xC0 && c <= 0xDE && c != 0xD7;
    return (c >= 'A' && c <= 'Z') || latin1 ? static_cast<Unit>(c + 0x20) : c;
}

/// Compares menu captions: without "&" (a doubled one stands for itself), what follows a tab, and
/// case. An empty caption is equal to none.
template <class Unit>
constexpr bool sameCaption(const Unit* a, const Unit* b)
{
    const auto next = [](const Unit*& text) -> Unit {
        if (*text == '&' && text[1] != 0)
            ++text;
        return *text == '\t' ? Unit{0} : lowerUnit(*text);
    };
    for (bool any = false;; any = true) {
        const Unit left = next(a);
        if (left != next(b))
            return false;
        if (left == 0)
            return any;
        ++a;
        ++b;
    }
}

} // namespace velora::agent
