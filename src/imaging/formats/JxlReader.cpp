#include "JxlReader.h"

#include <QThread>

#include <jxl/decode.h>
#include <jxl/thread_parallel_runner.h>

#include <memory>

namespace kavori {

namespace {

struct JxlFree {
    void operator()(JxlDecoder* d) const { JxlDecoderDestroy(d); }
};
struct RunnerFree {
    void operator()(void* r) const { JxlThreadParallelRunnerDestroy(r); }
};

// Runs the decoder over the whole file: the header (size as shown and colour profile) always,
// the first frame's pixels only when picture is given. False when the file is damaged or
// short.
bool decode(const QByteArray& file, PictureHeader& header, QImage* picture)
{
    const std::unique_ptr<JxlDecoder, JxlFree> decoder(JxlDecoderCreate(nullptr));
    if (!decoder)
        return false;
    JxlDecoder* d = decoder.get();
    std::unique_ptr<void, RunnerFree> runner;
    if (picture) {
        runner.reset(JxlThreadParallelRunnerCreate(nullptr, size_t(QThread::idealThreadCount())));
        if (!runner || JxlDecoderSetParallelRunner(d, JxlThreadParallelRunner, runner.get()) !=
                           JXL_DEC_SUCCESS)
            return false;
    }
    const int events =
        JXL_DEC_BASIC_INFO | JXL_DEC_COLOR_ENCODING | (picture ? JXL_DEC_FULL_IMAGE : 0);
    if (JxlDecoderSubscribeEvents(d, events) != JXL_DEC_SUCCESS ||
        JxlDecoderSetInput(d, reinterpret_cast<const uint8_t*>(file.constData()),
                           size_t(file.size())) != JXL_DEC_SUCCESS)
        return false;
    JxlDecoderCloseInput(d);
    const JxlPixelFormat format{4, JXL_TYPE_UINT8, JXL_NATIVE_ENDIAN, 0};
    for (;;) {
        switch (JxlDecoderProcessInput(d)) {
        case JXL_DEC_BASIC_INFO: {
            JxlBasicInfo info;
            if (JxlDecoderGetBasicInfo(d, &info) != JXL_DEC_SUCCESS)
                return false;
            const QSize stored(int(info.xsize), int(info.ysize));
            // Orientations 5 to 8 swap the sides; the decoder turns the pixels itself.
            header.size = info.orientation >= JXL_ORIENT_TRANSPOSE ? stored.transposed() : stored;
            if (header.size.isEmpty() ||
                qint64(header.size.width()) * header.size.height() * 4 > kMaxPictureBytes)
                return false;
            break;
        }
        case JXL_DEC_COLOR_ENCODING: {
            size_t size = 0;
            if (JxlDecoderGetICCProfileSize(d, nullptr, JXL_COLOR_PROFILE_TARGET_DATA, &size) ==
                JXL_DEC_SUCCESS) {
                QByteArray icc(qsizetype(size), '\0');
                if (JxlDecoderGetColorAsICCProfile(d, nullptr, JXL_COLOR_PROFILE_TARGET_DATA,
                                                   reinterpret_cast<uint8_t*>(icc.data()),
                                                   size) == JXL_DEC_SUCCESS)
                    header.colorSpace = QColorSpace::fromIccProfile(icc);
            }
            if (!picture)
                return true;
            break;
        }
        case JXL_DEC_NEED_IMAGE_OUT_BUFFER: {
            *picture = QImage(header.size, QImage::Format_RGBA8888);
            size_t needed = 0;
            if (picture->isNull() ||
                JxlDecoderImageOutBufferSize(d, &format, &needed) != JXL_DEC_SUCCESS ||
                needed != size_t(picture->sizeInBytes()) ||
                JxlDecoderSetImageOutBuffer(d, &format, picture->bits(), needed) != JXL_DEC_SUCCESS)
                return false;
            break;
        }
        case JXL_DEC_FULL_IMAGE: // the first frame is the picture shown
        case JXL_DEC_SUCCESS:
            return !picture || !picture->isNull();
        default: // an error, or input that ends too soon
            return false;
        }
    }
}

} // namespace

PictureHeader JxlReader::readHeader(const QByteArray& file) const
{
    PictureHeader header;
    if (!decode(file, header, nullptr))
        return {};
    return header;
}

QImage JxlReader::read(const QByteArray& file, const QSize& target) const
{
    PictureHeader header;
    QImage picture;
    if (!decode(file, header, &picture))
        return {};
    picture = FitDecoded(picture, target);
    picture.setColorSpace(header.colorSpace);
    return picture;
}

} // namespace kavori
