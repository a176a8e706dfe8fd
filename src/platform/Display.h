#pragma once

namespace kavori {

// Bits per pixel of the primary screen (32 when there is no screen to ask).
int DisplayColorDepth();

// Tests pretend a depth (4, 8, 24 ...); 0 goes back to asking the screen.
void SetDisplayColorDepthOverride(int bits);

} // namespace kavori
