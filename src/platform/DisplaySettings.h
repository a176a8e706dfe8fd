#pragma once

namespace kavori {

// Opens the desktop's display settings (the system's display properties). False when this
// desktop has no such program.
bool OpenDisplaySettings();

} // namespace kavori
