#include "sounds/WavDescriptions.h"

namespace velora {

WavDescriptions& wavDescriptions()
{
    static WavDescriptions instance;
    return instance;
}

void wavDescriptionsChanged()
{
    if (wavDescriptions().changed)
        wavDescriptions().changed();
}

} // namespace velora
