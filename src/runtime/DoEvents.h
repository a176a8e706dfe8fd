#pragma once

namespace kavori {

// Lets pending window events run, so long work on the UI thread keeps the window alive.
void DoEvents();

} // namespace kavori
