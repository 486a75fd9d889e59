#pragma once
// The fade in use: it lives in the options, and changes after a use when the user wants that.
#include "base/random.h"
#include "chat/modFade.h"

#include <functional>
#include <optional>
#include <string>

namespace velora {

/// The options' fade, and the reverse: only what differs is written, so that observers hear of real
/// changes only. Writing throws Error when the settings refuse.
Fade currentFade();
void setCurrentFade(const Fade& fade);

/// Fades a text with the fade in use, then prepares the next one.
void FadeEngine(std::wstring& text, bool breakLines = false);

/// What follows a use: with "new fade after use" and "random fade" on, new random colours or the
/// fade that `nextScheme` picks, then random styles.
void prepareNextFade(RandomSource& random);

/// Picks another saved scheme; absent when there is none. Set by the scheme list.
extern std::function<std::optional<Fade>(RandomSource&)> nextScheme;

/// Keeps the fade as it is while one exists: the parts of one message must match, and a preview
/// uses up nothing.
class SameFade {
public:
    SameFade();
    ~SameFade();
    SameFade(const SameFade&) = delete;
    SameFade& operator=(const SameFade&) = delete;
};

} // namespace velora
