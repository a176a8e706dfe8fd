#pragma once

#include <QString>

namespace kavori {

// The optional bonus pack of textures, sounds and images, told by "BONUSPAK.DAT" in the
// program's folder. Both values are empty when there is no pack or its file is damaged.
struct BonusPack {
    QString BonusPackName;
    QString BonusPackEdition;
};

const BonusPack& CurrentBonusPack();
// Reads the file once at start.
void LoadBonusPack();

} // namespace kavori
