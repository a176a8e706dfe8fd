#include "viewer/ImageDocument.h"
#include "runtime/MsgBox.h"
#include "support/KavoriTest.h"

#include <QFileInfo>

using namespace kavori;

class ImageDocumentTest : public kavori::test::KavoriTest {};

TEST_F(ImageDocumentTest, OneLevelOfUndoAndTheTitle)
{
    ImageDocument doc;
    EXPECT_EQ(doc.title(), "Kavori");
    EXPECT_EQ(doc.undoCaption(), "Can't Undo");
    EXPECT_FALSE(doc.undo());

    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setPixel(0, 0, qRgb(255, 0, 0));
    doc.setImage(image, QStringLiteral("/pictures/Beach.jpg"));
    EXPECT_EQ(doc.title(), "Kavori - [Beach.jpg]");
    EXPECT_FALSE(doc.imageChanged());

    EXPECT_TRUE(doc.edit(QStringLiteral("&Undo Rotate"),
                         [](const QImage& i) {
                             return EditResult{Rotate90Clockwise(i), {}};
                         })
                    .isEmpty());
    EXPECT_EQ(doc.image().size(), QSize(20, 40));
    EXPECT_TRUE(doc.imageChanged());
    EXPECT_EQ(doc.undoCaption(), "&Undo Rotate");
    EXPECT_TRUE(QFileInfo::exists(ImageDocument::UndoSnapshotPath()));
    EXPECT_EQ(ImageDocument::UndoSnapshotPath(), root() + QStringLiteral("tmp/~undo.tmp"));

    // A second edit replaces the snapshot: undo goes back one step only.
    doc.edit(QStringLiteral("&Undo Flip"), [](const QImage& i) {
        return EditResult{FlipVertical(i), {}};
    });
    ASSERT_TRUE(doc.undo());
    EXPECT_EQ(doc.image().size(), QSize(20, 40));
    EXPECT_EQ(QColor(doc.image().pixel(19, 0)), QColor(Qt::red));
    EXPECT_TRUE(doc.imageChanged()); // still the rotated, unsaved picture
    EXPECT_EQ(doc.undoCaption(), "Can't Undo");

    // A refused command changes nothing and keeps the undo state.
    const QString refusal = doc.edit(QStringLiteral("&Undo Size"),
                                     [](const QImage& i) { return ResizeTo(i, QSize(2, 2)); });
    EXPECT_EQ(refusal, "You may not make the current image any smaller...");
    EXPECT_EQ(doc.image().size(), QSize(20, 40));
    EXPECT_EQ(doc.undoCaption(), "Can't Undo");

    // Undo of the first edit of a saved picture brings back its saved state.
    doc.markSaved(QStringLiteral("/pictures/Beach2.bmp"));
    doc.edit(QStringLiteral("&Undo Flip"), [](const QImage& i) {
        return EditResult{FlipHorizontal(i), {}};
    });
    ASSERT_TRUE(doc.undo());
    EXPECT_FALSE(doc.imageChanged());
    EXPECT_EQ(doc.title(), "Kavori - [Beach2.bmp]");
}

TEST_F(ImageDocumentTest, UnsavedImageQuestion)
{
    ImageDocument doc;
    QImage image(8, 8, QImage::Format_RGB32);
    doc.setImage(image, ImageDocument::UntitledName(), true);
    EXPECT_EQ(doc.title(), "Kavori - [Untitled.BMP]");
    prompts().answers = {vbNo, vbYes};
    EXPECT_FALSE(ConfirmDiscardChanges(doc));
    EXPECT_TRUE(ConfirmDiscardChanges(doc));
    ASSERT_EQ(prompts().calls.size(), 2);
    EXPECT_EQ(prompts().calls[0].text,
              "The current file has not been saved.\r\n\r\nDiscard changes and continue?");
    EXPECT_EQ(prompts().calls[0].style, vbYesNo + vbQuestion);
    doc.markSaved(QStringLiteral("/x/y.bmp"));
    EXPECT_TRUE(ConfirmDiscardChanges(doc));
    EXPECT_EQ(prompts().calls.size(), 2);
}
