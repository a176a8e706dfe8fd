#include "QuickFolders.h"

#include "FileJobs.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "runtime/WaitDialog.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"

#include <QDir>
#include <QFileInfo>

namespace kavori {

namespace {

// One file needs no progress window.
class NoProgress final : public Progress {
public:
    void setCaption(const QString&) override {}
    void setMaximum(int) override {}
    void setValue(int) override {}
    bool cancelled() override { return false; }
};

QString keyName(int index)
{
    return QStringLiteral("F") + QString::number(index + 1);
}

} // namespace

QuickAction CurrentQuickAction()
{
    switch (CurrentSettings().LastQuickAction) {
    case 1:
        return QuickAction::Move;
    case 2:
        return QuickAction::Open;
    default:
        return QuickAction::Copy;
    }
}

QString QuickFolderPath(int index)
{
    if (index < 0 || index >= kQuickFolders)
        return {};
    return CurrentSettings().QuickFolderPath[size_t(index)];
}

QString QuickFolderCaption(int index)
{
    const QString path = QuickFolderPath(index);
    if (path.isEmpty())
        return keyName(index) + QStringLiteral("  (not set)");
    const QString name = CurrentSettings().QuickFolder[size_t(index)];
    return keyName(index) + QStringLiteral("  ") +
           (name.isEmpty() ? QDir::toNativeSeparators(path) : name);
}

QString QuickFolderRefusal(int index)
{
    const QString path = QuickFolderPath(index);
    if (path.isEmpty())
        return QStringLiteral("The quick folder ") + keyName(index) +
               QStringLiteral(" has not been set up yet.") + NewLine2() +
               QStringLiteral("Choose its folder with \"Quick Folders...\" in the Files menu...");
    if (!QFileInfo(path).isDir())
        return QStringLiteral("The quick folder ") + keyName(index) +
               QStringLiteral(" could not be found:") + NewLine2() +
               QDir::toNativeSeparators(path) + NewLine2() +
               QStringLiteral("Choose another folder with \"Quick Folders...\" in the Files "
                              "menu...");
    return {};
}

void SetQuickFolder(int index, const QString& name, const QString& path)
{
    if (index < 0 || index >= kQuickFolders)
        return;
    Settings& s = CurrentSettings();
    s.QuickFolderPath[size_t(index)] = path.isEmpty() ? QString() : AddSlash(path);
    s.QuickFolder[size_t(index)] =
        path.isEmpty() ? QString()
                       : (name.trimmed().isEmpty() ? QDir(path).dirName() : name.trimmed());
}

void WriteQuickFolders()
{
    QStringList keys;
    for (int i = 1; i <= kQuickFolders; ++i)
        keys << QStringLiteral("QuickFolder") + QString::number(i)
             << QStringLiteral("QuickFolderPath") + QString::number(i);
    keys << QStringLiteral("LastQuickAction");
    WriteSettingsKeys(keys);
}

QString SendToQuickFolder(int index, const QString& file, bool move)
{
    const QString refusal = QuickFolderRefusal(index);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbInformation);
        return {};
    }
    if (!IsFullPath(file) || !QFileInfo(file).isFile()) {
        MsgBox(QStringLiteral("An image has not been opened yet, unable to ") +
                   (move ? QStringLiteral("move") : QStringLiteral("copy")) + QStringLiteral("..."),
               vbInformation);
        return {};
    }
    FileJobRequest request;
    request.kind = move ? FileJobKind::Move : FileJobKind::Copy;
    request.sourceFolder = FolderOf(file);
    request.destinationFolder = QuickFolderPath(index);
    request.filesInSource = 1;
    request.selected = {file};
    const QString same = FileJobRefusal(request);
    if (!same.isEmpty()) {
        MsgBox(same, vbInformation);
        return {};
    }
    NoProgress quiet;
    const FileJobResult result = RunFileJob(request, quiet);
    return result.targets.isEmpty() ? QString() : result.targets.first();
}

} // namespace kavori
