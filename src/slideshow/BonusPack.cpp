#include "BonusPack.h"

#include "platform/AppPaths.h"
#include "runtime/ListInput.h"

namespace kavori {

namespace {
BonusPack& pack()
{
    static BonusPack p;
    return p;
}
} // namespace

const BonusPack& CurrentBonusPack()
{
    return pack();
}

void LoadBonusPack()
{
    pack() = BonusPack();
    ListInput in;
    if (!in.open(PathNoCase(AppPath(), QStringLiteral("BONUSPAK.DAT"))))
        return;
    if (in.next() != QLatin1String("Kavori Bonus Pack Data File") || in.next() != QString(34, u'-'))
        return;
    pack().BonusPackName = in.next();
    pack().BonusPackEdition = in.next();
}

} // namespace kavori
