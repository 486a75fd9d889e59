#pragma once
#include <string>

/// A WAV file of 8-bit mono silence with a quiet tone, `milliseconds` long.
std::string wavFile(int milliseconds, int samplesPerSecond = 8000);
