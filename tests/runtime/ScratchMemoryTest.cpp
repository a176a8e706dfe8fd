#include "runtime/ScratchMemory.h"

#include <QColor>
#include <QList>

#include <gtest/gtest.h>

#include <cstring>
#include <utility>
#include <vector>

using namespace kavori;

// A dropped buffer is handed to the next request it fits without much waste; the stock never
// holds more than its limit; moving a buffer moves its ownership.
TEST(ScratchMemoryTest, DroppedBuffersAreReusedWithinALimit)
{
    const size_t mb = size_t(1) << 20;
    void* first = nullptr;
    {
        ScratchBuffer a(8 * mb);
        ASSERT_NE(a.data(), nullptr);
        std::memset(a.data(), 1, a.size());
        first = a.data();
    }
    {
        ScratchBuffer small(1 * mb); // would waste most of the 8 MB block
        EXPECT_NE(small.data(), first);
        ScratchBuffer again(6 * mb);
        EXPECT_EQ(again.data(), first);
        EXPECT_GE(again.size(), 6 * mb);

        ScratchBuffer moved(std::move(again));
        EXPECT_EQ(again.data(), nullptr);
        EXPECT_EQ(moved.data(), first);
        ScratchBuffer target(2 * mb);
        target = std::move(moved);
        EXPECT_EQ(target.data(), first);
    }
    {
        std::vector<ScratchBuffer> many;
        for (int i = 0; i < 20; ++i)
            many.emplace_back(10 * mb);
    }
    EXPECT_LE(ScratchStockBytes(), kScratchStockBytes);
    EXPECT_GT(ScratchStockBytes(), 0u);

    ScratchBuffer tiny(16); // small requests come straight from malloc
    EXPECT_NE(tiny.data(), nullptr);
}

// Pictures from the stock behave like ordinary ones at every size and format the program
// uses: lines start on 32-bit boundaries, pixels read back as written, large ones start on a
// 2 MiB boundary and go back to the stock for the next picture of their size.
TEST(ScratchMemoryTest, PicturesFromTheStockAreOrdinaryPictures)
{
    const QImage::Format formats[] = {
        QImage::Format_RGB32,      QImage::Format_ARGB32, QImage::Format_ARGB32_Premultiplied,
        QImage::Format_Grayscale8, QImage::Format_RGB888, QImage::Format_Indexed8};
    const QSize sizes[] = {QSize(1, 1),       QSize(333, 257),   QSize(1441, 1079),
                           QSize(1920, 1080), QSize(3840, 2160), QSize(4000, 3000)};
    for (const QImage::Format format : formats) {
        for (const QSize& size : sizes) {
            SCOPED_TRACE(testing::Message()
                         << format << " " << size.width() << "x" << size.height());
            QImage image = ScratchImage(size, format);
            ASSERT_FALSE(image.isNull());
            EXPECT_EQ(image.size(), size);
            EXPECT_EQ(image.format(), format);
            EXPECT_EQ(image.bytesPerLine() % 4, 0);
            if (format == QImage::Format_Indexed8) {
                QList<QRgb> table;
                for (int i = 0; i < 256; ++i)
                    table << qRgb(i, 255 - i, i / 2);
                image.setColorTable(table);
            }
            QImage expected(size, format);
            expected.setColorTable(image.colorTable());
            const QRgb colours[] = {qRgb(200, 10, 30), qRgb(0, 0, 0), qRgb(255, 255, 255)};
            for (int i = 0; i < 3; ++i) {
                const QPoint p = i == 0   ? QPoint(0, 0)
                                 : i == 1 ? QPoint(size.width() - 1, size.height() - 1)
                                          : QPoint(size.width() / 2, size.height() / 3);
                if (format == QImage::Format_Indexed8) {
                    image.setPixel(p, uint(40 * i + 7));
                    expected.setPixel(p, uint(40 * i + 7));
                } else {
                    image.setPixelColor(p, QColor(colours[i]));
                    expected.setPixelColor(p, QColor(colours[i]));
                }
                EXPECT_EQ(image.pixel(p), expected.pixel(p));
            }
            const QImage copy = ScratchCopy(image, format);
            ASSERT_EQ(copy.size(), size);
            EXPECT_EQ(copy.pixel(size.width() - 1, size.height() - 1),
                      image.pixel(size.width() - 1, size.height() - 1));
            EXPECT_EQ(copy.colorTable(), image.colorTable());

            const qint64 bytes = qint64(image.bytesPerLine()) * size.height();
            if (bytes < (qint64(2) << 20))
                continue;
            EXPECT_TRUE(IsScratchImage(image));
            EXPECT_EQ(reinterpret_cast<quintptr>(image.constBits()) % (quintptr(2) << 20), 0u);
            image = QImage();
            EXPECT_FALSE(IsScratchImage(image));
            const size_t held = ScratchStockBytes();
            ASSERT_GT(held, 0u);
            const QImage again = ScratchImage(size, format); // a kept block, pages mapped
            EXPECT_LT(ScratchStockBytes(), held);
        }
    }
    // Sizes the stock cannot hold and impossible ones.
    EXPECT_TRUE(ScratchImage(QSize(0, 10), QImage::Format_RGB32).isNull());
    EXPECT_TRUE(ScratchImage(QSize(10, 10), QImage::Format_Invalid).isNull());
    const QImage huge = ScratchImage(QSize(8000, 6000), QImage::Format_RGB32);
    EXPECT_FALSE(IsScratchImage(huge));
    EXPECT_EQ(huge.size(), QSize(8000, 6000));

    // A copy of a picture keeps its own pixels when the original changes.
    QImage original = ScratchImage(QSize(1000, 800), QImage::Format_RGB32);
    original.fill(Qt::red);
    const QImage shared = original;
    const QImage copied = ScratchCopy(shared, QImage::Format_RGB32);
    original.fill(Qt::blue);
    EXPECT_EQ(copied.pixel(500, 400), qRgb(255, 0, 0));
    EXPECT_EQ(shared.pixel(500, 400), qRgb(255, 0, 0));

    ReleaseScratchStock();
    EXPECT_EQ(ScratchStockBytes(), 0u);
}
