// The comma-separated reader every file of the program's own formats goes through.
#include "FuzzSupport.h"

#include "runtime/ListInput.h"

KAVORI_FUZZ_TARGET
{
    using namespace kavori;
    ListInput in;
    if (!in.open(fuzz::WriteScratch(QStringLiteral("LIST.DAT"), data, size)))
        return 0;
    // Every way of reading, in turn, until the end: each call must move on.
    for (int call = 0; !in.atEnd(); ++call) {
        switch (call % 3) {
        case 0:
            (void)in.next();
            break;
        case 1:
            (void)in.nextView();
            break;
        default:
            (void)in.nextLine();
            break;
        }
    }
    return 0;
}
