#include "fileutil/FileJobs.h"
#include "platform/Volumes.h"
#include "runtime/MsgBox.h"
#include "runtime/WaitDialog.h"
#include "settings/Settings.h"
#include "slideshow/DescriptionFile.h"
#include "slideshow/SlideShow.h"
#include "support/FakeProgress.h"
#include "support/ShowTest.h"

#include <QDir>
#include <QFileInfo>

using namespace kavori;

namespace {

using kavori::test::FakeProgress;

} // namespace

class FileJobsTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        CurrentSettings().UseRecycleBin = false;
        src = root() + QStringLiteral("src/");
        dst = root() + QStringLiteral("dst/");
        for (const char* n : {"a.jpg", "b.jpg", "c.jpg"})
            writeFile(src + QString::fromLatin1(n), QByteArray("bytes of ") + n);
        writeFile(src + QStringLiteral("!Description"),
                  "Kavori Description File\r\n------------------------------\r\n"
                  "a.jpg\r\nThe first\r\nb.jpg\r\nThe second\r\n");
        QDir().mkpath(dst);
    }
    FileJobRequest request(FileJobKind kind, const QStringList& names)
    {
        FileJobRequest r;
        r.kind = kind;
        r.sourceFolder = src;
        r.destinationFolder = dst;
        r.filesInSource = 3;
        for (const QString& n : names)
            r.selected << src + n;
        return r;
    }
    QString src;
    QString dst;
    FakeProgress progress;
};

TEST_F(FileJobsTest, CopyAndMoveRefusalsAndQuestions)
{
    FileJobRequest r = request(FileJobKind::Copy, {});
    r.filesInSource = 0;
    EXPECT_EQ(FileJobRefusal(r),
              "There are no files in the selected source directory, nothing to copy...");
    r.filesInSource = 3;
    EXPECT_EQ(FileJobRefusal(r), "No files are selected, nothing to copy...");
    r = request(FileJobKind::Move, {QStringLiteral("a.jpg")});
    r.destinationFolder = root() + QStringLiteral("src");
    EXPECT_EQ(FileJobRefusal(r), "The source and destination paths are the same, no need to move "
                                 "files to selected destination...");
    r.destinationFolder = dst;
    EXPECT_EQ(FileJobQuestion(r), "Move the file:\r\n\r\na.jpg\r\n\r\n...to the following "
                                  "directory?\r\n\r\n" +
                                      dst);
    r = request(FileJobKind::Copy, {QStringLiteral("a.jpg"), QStringLiteral("b.jpg")});
    EXPECT_EQ(FileJobQuestion(r), "Copy 2 files to the following directory?\r\n\r\n" + dst);

    // A refusal is shown and nothing is asked or done; No to the question does nothing.
    r.selected.clear();
    EXPECT_FALSE(ConfirmFileJob(r));
    EXPECT_EQ(prompts().texts(), QStringList({"No files are selected, nothing to copy..."}));
    prompts().clear();
    prompts().answers = {vbNo, vbYes};
    r = request(FileJobKind::Copy, {QStringLiteral("a.jpg")});
    EXPECT_FALSE(ConfirmFileJob(r));
    EXPECT_TRUE(ConfirmFileJob(r));
    EXPECT_EQ(prompts().texts(), QStringList({FileJobQuestion(r), FileJobQuestion(r)}));
}

TEST_F(FileJobsTest, CopyWithDescriptionsReplaceQuestionAndCancel)
{
    writeFile(dst + QStringLiteral("b.jpg"), "older");
    prompts().answers = {vbNo}; // replace b.jpg? no
    FileJobResult result = RunFileJob(
        request(FileJobKind::Copy, {QStringLiteral("a.jpg"), QStringLiteral("b.jpg")}), progress);
    EXPECT_EQ(result.targets, QStringList({dst + QStringLiteral("a.jpg")}));
    EXPECT_EQ(prompts().calls[0].text,
              "The following file already exists in the destination folder:\r\n\r\nb.jpg\r\n\r\n"
              "Replace this file with the one in the source folder?");
    EXPECT_EQ(readFile(dst + QStringLiteral("b.jpg")), "older");
    EXPECT_EQ(readFile(dst + QStringLiteral("a.jpg")), "bytes of a.jpg");
    EXPECT_TRUE(QFileInfo::exists(src + QStringLiteral("a.jpg")));
    EXPECT_EQ(GetDescription(dst + QStringLiteral("a.jpg")), "The first");
    EXPECT_EQ(progress.captions.first(), "Kavori is preparing to copy files...");
    EXPECT_TRUE(progress.captions.contains("Kavori is copying the file:\r\n" + src + "a.jpg"));

    // Yes to replacing; descriptions stay home when the setting is off.
    CurrentSettings().CopyDescription = false;
    prompts().clear();
    prompts().answers = {vbYes};
    RunFileJob(request(FileJobKind::Copy, {QStringLiteral("b.jpg")}), progress);
    EXPECT_EQ(readFile(dst + QStringLiteral("b.jpg")), "bytes of b.jpg");
    EXPECT_EQ(GetDescription(dst + QStringLiteral("b.jpg")), "");

    // Cancelled after the first file: the rest stays behind and the user is told.
    prompts().clear();
    progress.cancelAfter = 1;
    const QString other = root() + QStringLiteral("other/");
    QDir().mkpath(other);
    FileJobRequest r =
        request(FileJobKind::Copy, {QStringLiteral("a.jpg"), QStringLiteral("c.jpg")});
    r.destinationFolder = other;
    result = RunFileJob(r, progress);
    EXPECT_TRUE(result.cancelled);
    EXPECT_TRUE(QFileInfo::exists(other + QStringLiteral("a.jpg")));
    EXPECT_FALSE(QFileInfo::exists(other + QStringLiteral("c.jpg")));
    EXPECT_EQ(prompts().texts().last(), "File copy was canceled, all files were not copied...");
}

TEST_F(FileJobsTest, MoveProtectsTheOpenImageAndUpdatesTheShow)
{
    CurrentShow().slides = {NewSlide(src + QStringLiteral("a.jpg")),
                            NewSlide(src + QStringLiteral("c.jpg"))};
    CurrentSettings().FavoriteFile[0] = src + QStringLiteral("a.jpg");
    FileJobRequest r =
        request(FileJobKind::Move, {QStringLiteral("a.jpg"), QStringLiteral("c.jpg")});
    r.currentFile = src + QStringLiteral("c.jpg");
    const FileJobResult result = RunFileJob(r, progress);
    EXPECT_EQ(result.targets, QStringList({dst + QStringLiteral("a.jpg")}));
    EXPECT_EQ(
        prompts().texts(),
        QStringList({"Unable to move the file:\r\n\r\nc.jpg\r\n\r\n...image is currently open.",
                     "At least one of the selected file(s) is in the current slide show, the "
                     "entry(s) were updated as a result..."}));
    EXPECT_FALSE(QFileInfo::exists(src + QStringLiteral("a.jpg")));
    EXPECT_EQ(readFile(dst + QStringLiteral("a.jpg")), "bytes of a.jpg");
    EXPECT_TRUE(QFileInfo::exists(src + QStringLiteral("c.jpg")));
    EXPECT_EQ(CurrentShow().slides[0].SlideFile, dst + QStringLiteral("a.jpg"));
    EXPECT_EQ(CurrentShow().slides[1].SlideFile, src + QStringLiteral("c.jpg"));
    // The description and the favourite went along.
    EXPECT_EQ(GetDescription(dst + QStringLiteral("a.jpg")), "The first");
    EXPECT_EQ(GetDescription(src + QStringLiteral("a.jpg")), "");
    EXPECT_EQ(GetDescription(src + QStringLiteral("b.jpg")), "The second");
    EXPECT_EQ(CurrentSettings().FavoriteFile[0], dst + QStringLiteral("a.jpg"));
}

TEST_F(FileJobsTest, DeleteImagesAndFolders)
{
    DeleteRequest r;
    r.folder = src;
    r.filesInFolder = 0;
    DeleteFiles(r);
    r.filesInFolder = 3;
    DeleteFiles(r);
    EXPECT_EQ(
        prompts().texts(),
        QStringList({"There are no files in the selected directory to delete.",
                     "Nothing was selected to delete.\r\n\r\nSelect the file(s) that you want "
                     "to delete and then try again..."}));
    prompts().clear();
    r.selected = {src + QStringLiteral("a.jpg"), src + QStringLiteral("b.jpg")};
    r.currentFile = src + QStringLiteral("B.jpg");
    prompts().answers = {vbYes};
    EXPECT_EQ(DeleteFiles(r), QStringList({src + QStringLiteral("a.jpg")}));
    EXPECT_EQ(prompts().texts(),
              QStringList({"You are about to delete 2 files from the directory:\r\n\r\n" + src +
                               "\r\n\r\nAre you sure?",
                           "Unable to delete:\r\n\r\nb.jpg\r\n\r\nImage is currently open..."}));
    EXPECT_EQ(GetDescription(src + QStringLiteral("b.jpg")), "The second");
    EXPECT_TRUE(QFileInfo::exists(src + QStringLiteral("b.jpg")));

    // The Delete key: nothing chosen, the open image, then a file after the routine's question.
    prompts().clear();
    EXPECT_FALSE(DeleteByKey(QString(), QString()));
    EXPECT_FALSE(DeleteByKey(src + QStringLiteral("c.jpg"), src + QStringLiteral("c.jpg")));
    prompts().answers = {vbYes};
    EXPECT_TRUE(DeleteByKey(src + QStringLiteral("c.jpg"), src + QStringLiteral("b.jpg")));
    EXPECT_EQ(prompts().texts().mid(0, 2),
              QStringList({"Unable to delete file by pressing the delete key, nothing is selected "
                           "in the file list...",
                           "Unable to delete this file, image is currently open..."}));

    // An empty folder may go after its question; a full one and a drive's root may not.
    prompts().clear();
    const QString empty = root() + QStringLiteral("empty");
    QDir().mkpath(empty);
    DeleteRequest e;
    e.folder = empty;
    e.folderIsEmpty = true;
    prompts().answers = {vbYes};
    bool removed = false;
    DeleteFiles(e, &removed);
    EXPECT_TRUE(removed);
    EXPECT_FALSE(QFileInfo::exists(empty));
    EXPECT_EQ(prompts().texts().first(),
              "This directory is empty:\r\n\r\n" + empty + "/\r\n\r\nWould you like to delete it?");

    prompts().clear();
    SetLogicalDrivesOverride(QVector<Volume>{{dst, DriveType::Fixed, {}}});
    EXPECT_FALSE(DeleteEmptyFolder(QStringLiteral("/"), false));
    EXPECT_FALSE(DeleteEmptyFolder(dst, false));
    SetLogicalDrivesOverride(std::nullopt);
    EXPECT_FALSE(DeleteEmptyFolder(src, false));
    EXPECT_FALSE(DeleteEmptyFolder(src, true));
    prompts().answers = {vbNo, vbYes};
    EXPECT_FALSE(DeleteEmptyFolder(dst, false));
    EXPECT_TRUE(DeleteEmptyFolder(dst, false));
    EXPECT_FALSE(QFileInfo::exists(dst));
    EXPECT_EQ(prompts().texts().mid(0, 4),
              QStringList({"You may not delete the root folder on your hard drive...",
                           "You may not delete the root folder on your hard drive...",
                           "The selected folder is not empty, unable to delete...",
                           "Unable to delete the directory:\r\n\r\n" + src +
                               "\r\n\r\nThe selected path is not empty..."}));
    EXPECT_EQ(prompts().texts()[4],
              "You are about to delete the folder:\r\n\r\n" + dst + "\r\n\r\nAre you sure?");
}

TEST_F(FileJobsTest, RenameWithItsRefusalsAndFollowers)
{
    const QString a = src + QStringLiteral("a.jpg");
    EXPECT_EQ(RenameRefusal(0, a, QString()),
              "There are no files in the selected directory to rename...");
    EXPECT_EQ(RenameRefusal(3, QString(), QString()),
              "A file has not been selected, nothing to rename...");
    EXPECT_EQ(RenameRefusal(3, a, a), "Unable to rename selected file, image is currently open...");
    EXPECT_EQ(RenameRefusal(3, a, src + QStringLiteral("b.jpg")), "");

    CurrentShow().slides = {NewSlide(a)};
    CurrentSettings().FavoriteFile[2] = a;
    // A forbidden character asks again; then the new name (extension kept).
    prompts().inputs = {QStringLiteral("sun|set"), QStringLiteral("sunset")};
    EXPECT_EQ(RenameFile(a), src + QStringLiteral("sunset.jpg"));
    EXPECT_EQ(prompts().inputCalls.size(), 2);
    EXPECT_EQ(prompts().inputCalls[0].text, "Enter a new name for the file:");
    EXPECT_EQ(prompts().inputCalls[0].title, "Kavori - [Rename Image]");
    EXPECT_TRUE(prompts().texts()[0].startsWith(
        "A filename may not contain any of the following characters:"));
    EXPECT_EQ(readFile(src + QStringLiteral("sunset.jpg")), "bytes of a.jpg");
    EXPECT_EQ(GetDescription(src + QStringLiteral("sunset.jpg")), "The first");
    EXPECT_EQ(CurrentShow().slides[0].SlideFile, src + QStringLiteral("sunset.jpg"));
    EXPECT_EQ(CurrentSettings().FavoriteFile[2], src + QStringLiteral("sunset.jpg"));

    // The same name, a taken name and a cancel rename nothing.
    prompts().clear();
    prompts().inputs = {QStringLiteral("b.jpg"), QStringLiteral("c"), std::nullopt};
    EXPECT_EQ(RenameFile(src + QStringLiteral("b.jpg")), "");
    EXPECT_EQ(RenameFile(src + QStringLiteral("b.jpg")), "");
    EXPECT_EQ(RenameFile(src + QStringLiteral("b.jpg")), "");
    EXPECT_EQ(
        prompts().texts(),
        QStringList({"The new filename is the same as the current one, unable to rename file...",
                     "The filename that was specified already exists, unable to rename file..."}));
}

TEST_F(FileJobsTest, NewFolderAsksAgainAfterABadName)
{
    prompts().inputs = {QStringLiteral("a:b"), QStringLiteral("a\\b"), QStringLiteral("Trips")};
    EXPECT_EQ(AskNewFolder(dst), dst + QStringLiteral("Trips"));
    EXPECT_TRUE(QFileInfo(dst + QStringLiteral("Trips")).isDir());
    EXPECT_EQ(prompts().inputCalls[0].text, "Enter the name of the folder to create:");
    EXPECT_EQ(
        prompts().texts(),
        QStringList(
            {"You may not use the : character in a folder name, enter folder name again...",
             "You may not use the \\ character in a folder name, enter folder name again..."}));
    prompts().clear();
    prompts().inputs = {QStringLiteral("")};
    EXPECT_EQ(AskNewFolder(dst), "");
    EXPECT_EQ(prompts().texts(), QStringList({"A folder name was not entered, try again..."}));
}
