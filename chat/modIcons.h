#pragma once
// The pictures on Velora's buttons. They are drawn here from shapes, so that they come in any size
// with smooth edges and belong together; no file is read.
#include <cstdint>
#include <vector>

namespace velora {

enum class IconId {
    wavs,
    ims,
    mail,
    people,
    quotes,
    hugs,
    fade,
    encrypt,
    menu,
    plus,
    play,
    stop,
    send,
    soundWav,
    soundMid,
    soundMp3,
    locate,
    notify,
    profile,
    ignore,
    notes,
    copy,
    log,
    answer,
    replyQuote,
    decrypt,
    advertise,
    count
};

/// size x size pixels, top row first, each 0xAARRGGBB with colours not multiplied by alpha.
std::vector<std::uint32_t> drawIcon(IconId id, int size);

} // namespace velora
