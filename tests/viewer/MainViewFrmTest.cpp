#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"
#include "viewer/ImageView.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>

using namespace kavori;

class MainViewFrmTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        QApplication::clipboard()->clear();
    }
    QString makeImage(const QString& name, const QColor& color, QSize size = QSize(32, 24))
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(color);
        const QString path = root() + QStringLiteral("pics/") + name;
        writeFile(path, {});
        image.save(path, "BMP");
        return path;
    }
    static void run(MainViewFrm& w, const char* action)
    {
        QAction* a = w.menus().action(QString::fromLatin1(action));
        ASSERT_TRUE(a->isEnabled()) << action;
        a->trigger();
    }
};

TEST_F(MainViewFrmTest, BrowsesAFolderToBothEnds)
{
    const QString a = makeImage(QStringLiteral("a1.bmp"), Qt::red);
    makeImage(QStringLiteral("a2.bmp"), Qt::green);
    const QString c = makeImage(QStringLiteral("a10.bmp"), Qt::blue);
    writeFile(QStringLiteral("pics/readme.txt"), "not an image");
    MainViewFrm w;
    ASSERT_TRUE(w.openImage(a));
    EXPECT_EQ(w.windowTitle(), "Kavori - [a1.bmp]");

    run(w, "mnuBrowsePrevious");
    EXPECT_EQ(prompts().texts(), QStringList({"The first file in the current folder is already open..."}));
    run(w, "mnuBrowseNext");
    EXPECT_EQ(w.windowTitle(), "Kavori - [a2.bmp]");
    EXPECT_EQ(QColor(w.document().image().pixel(0, 0)), QColor(Qt::green));
    run(w, "mnuBrowseNext");
    EXPECT_EQ(w.document().currentFile(), c);
    run(w, "mnuBrowseNext");
    EXPECT_EQ(prompts().texts().last(), "The last file in the current folder is already open...");
    EXPECT_EQ(w.document().currentFile(), c);
    run(w, "mnuBrowseFirst");
    EXPECT_EQ(w.document().currentFile(), a);
    run(w, "mnuBrowseLast");
    EXPECT_EQ(w.document().currentFile(), c);

    // A changed image asks before it is replaced; No keeps it.
    run(w, "mnu90CW");
    prompts().answers = {vbNo};
    run(w, "mnuBrowseFirst");
    EXPECT_EQ(w.document().currentFile(), c);
    EXPECT_EQ(prompts().texts().last(), "The current file has not been saved.\r\n\r\nDiscard changes and continue?");
}

TEST_F(MainViewFrmTest, UndoEditsPasteAndFullScreenMessages)
{
    MainViewFrm w;
    QAction* undo = w.menus().action(QStringLiteral("mnuUndo"));
    EXPECT_EQ(undo->text(), "Can't Undo");
    EXPECT_FALSE(undo->isEnabled());

    run(w, "mnuFullScreen");
    EXPECT_EQ(prompts().texts().last(), "An image has not been opened yet, unable to view full screen...");
    run(w, "mnuPaste");
    EXPECT_EQ(prompts().texts().last(), "There is nothing to paste.\r\n\r\nNo image data was found on the clipboard...");

    ASSERT_TRUE(w.openImage(makeImage(QStringLiteral("p.bmp"), Qt::red, QSize(40, 20))));
    run(w, "mnu50Larger");
    EXPECT_EQ(w.document().image().size(), QSize(60, 30));
    EXPECT_TRUE(undo->isEnabled());
    EXPECT_EQ(undo->text(), "&Undo Resize");
    run(w, "mnuUndo");
    EXPECT_EQ(w.document().image().size(), QSize(40, 20));
    EXPECT_EQ(undo->text(), "Can't Undo");

    // Copy, then paste over a selection, stretched.
    run(w, "mnuCopy");
    QImage green(4, 4, QImage::Format_RGB32);
    green.fill(Qt::green);
    QApplication::clipboard()->setImage(green);
    w.imageView()->resize(400, 200);
    prompts().answers = {vbYes};
    run(w, "mnuPaste"); // no selection: a new untitled image
    EXPECT_EQ(w.windowTitle(), "Kavori - [Untitled.BMP]");
    EXPECT_EQ(w.document().image().size(), QSize(4, 4));
    EXPECT_TRUE(w.document().imageChanged());
}

TEST_F(MainViewFrmTest, UnreadableImageIsReportedAndNothingChanges)
{
    MainViewFrm w;
    const QString bad = writeFile(QStringLiteral("pics/broken.bmp"), "BM this is not a bitmap");
    EXPECT_FALSE(w.openImage(bad));
    EXPECT_EQ(w.windowTitle(), "Kavori");
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_TRUE(prompts().calls[0].text.contains(bad));
}
