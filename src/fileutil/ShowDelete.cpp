#include "ShowDelete.h"

#include "FileDelete.h"
#include "platform/AppPaths.h"
#include "platform/UserSettings.h"
#include "runtime/MsgBox.h"
#include "settings/RecentShows.h"
#include "slideshow/SlideShow.h"

#include <QDir>
#include <QFileInfo>

namespace kavori {

namespace {

const QString kSettings = QStringLiteral("Settings");
const QString kCurrentSaver = QStringLiteral("CurrentSaver");

bool sameFile(const QString& a, const QString& b)
{
    return !a.isEmpty() && !b.isEmpty() && QFileInfo(a) == QFileInfo(b);
}

} // namespace

ShowUse ShowInUse(const QString& path)
{
    ShowUse use;
    use.current = sameFile(CurrentShow().path, path);
    use.saver = sameFile(GetSetting(kSettings, kCurrentSaver), path);
    return use;
}

QString DeleteShowRefusal(const QString& path)
{
    if (!path.endsWith(QLatin1String(".KAV"), Qt::CaseInsensitive))
        return QStringLiteral("Only slide show files (.KAV) can be deleted here:") + NewLine2() +
               QDir::toNativeSeparators(path);
    if (!QFileInfo(path).isFile())
        return QStringLiteral("The slide show file could not be found:") + NewLine2() +
               QDir::toNativeSeparators(path);
    return QString();
}

QString DeleteShowQuestion(const QString& path, const ShowUse& use, bool toTrash)
{
    QString text = DeleteFileQuestion(path, toTrash);
    if (use.current)
        text += NewLine2() + QStringLiteral("It is the slide show open now: it stays open, but "
                                            "must be saved again to be kept.");
    if (use.saver)
        text += NewLine2() + QStringLiteral("It is your screen saver's slide show: the screen "
                                            "saver will have no show until you choose another.");
    return text;
}

bool DeleteSlideShowFile(const QString& path, const ShowUse& use)
{
    if (!DeleteOneFile(path, false))
        return false;
    ForgetShow(path);
    if (use.saver)
        SaveSetting(kSettings, kCurrentSaver, QString());
    if (use.current) {
        // The slides are kept; with no file behind them they count as unsaved.
        CurrentShow().path.clear();
        CurrentShow().changed = !CurrentShow().slides.isEmpty();
    }
    return true;
}

} // namespace kavori
