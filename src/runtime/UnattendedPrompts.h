#pragma once

#include "Prompts.h"

#include <functional>
#include <memory>

namespace kavori {

// Questions put to no one, for programs without a user at the screen (kav-export, the fuzz
// targets): each message box gets its default button and every picker or input box is
// cancelled. tell, when given, receives each message's text.
std::unique_ptr<Prompts> MakeUnattendedPrompts(std::function<void(const QString&)> tell = {});

} // namespace kavori
