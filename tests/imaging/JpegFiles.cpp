#include "JpegFiles.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <jpeglib.h>

namespace kavori::test {

namespace {

QByteArray exifOrientation(int orientation)
{
    // "Exif", then a big-endian TIFF header with one IFD entry: Orientation (0x0112), SHORT.
    const char bytes[] = {'E', 'x', 'i', 'f',  0,    0, 'M', 'M', 0, 0x2A, 0, 0, 0,
                          8,   0,   1,   0x01, 0x12, 0, 3,   0,   0, 0,    1, 0, char(orientation),
                          0,   0,   0,   0,    0,    0};
    return QByteArray(bytes, sizeof(bytes));
}

} // namespace

QByteArray EncodeJpeg(const QImage& picture, const JpegLayout& layout)
{
    const QImage rgb = picture.convertToFormat(QImage::Format_RGB888);
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &buffer, &size);
    info.image_width = JDIMENSION(rgb.width());
    info.image_height = JDIMENSION(rgb.height());
    info.input_components = layout.grey ? 1 : layout.cmyk ? 4 : 3;
    info.in_color_space = layout.grey ? JCS_GRAYSCALE : layout.cmyk ? JCS_CMYK : JCS_RGB;
    jpeg_set_defaults(&info);
    if (layout.storedRgb)
        jpeg_set_colorspace(&info, JCS_RGB);
    jpeg_set_quality(&info, layout.quality, TRUE);
    if (!layout.grey && !layout.cmyk && !layout.storedRgb) {
        info.comp_info[0].h_samp_factor = layout.lumaH;
        info.comp_info[0].v_samp_factor = layout.lumaV;
    }
    if (layout.progressive)
        jpeg_simple_progression(&info);
    info.restart_interval = JDIMENSION(layout.restartMcus);
    jpeg_start_compress(&info, TRUE);
    if (layout.orientation) {
        const QByteArray exif = exifOrientation(layout.orientation);
        jpeg_write_marker(&info, JPEG_APP0 + 1, reinterpret_cast<const JOCTET*>(exif.constData()),
                          unsigned(exif.size()));
    }
    std::vector<JSAMPLE> row(size_t(rgb.width()) * 4);
    while (info.next_scanline < info.image_height) {
        const uchar* source = rgb.constScanLine(int(info.next_scanline));
        for (int x = 0; x < rgb.width(); ++x) {
            const uchar* p = source + 3 * x;
            if (layout.grey) {
                row[size_t(x)] = JSAMPLE((p[0] * 77 + p[1] * 150 + p[2] * 29) >> 8);
            } else if (layout.cmyk) {
                for (int c = 0; c < 3; ++c)
                    row[size_t(4 * x + c)] = JSAMPLE(255 - p[c]);
                row[size_t(4 * x + 3)] = 0;
            } else {
                for (int c = 0; c < 3; ++c)
                    row[size_t(3 * x + c)] = p[c];
            }
        }
        JSAMPROW rows[1] = {row.data()};
        jpeg_write_scanlines(&info, rows, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    const QByteArray file(reinterpret_cast<const char*>(buffer), qsizetype(size));
    std::free(buffer);
    return file;
}

QByteArray MakeProgressive(const QByteArray& baseline, const std::vector<ProgressiveScan>& scans,
                           int restartMcus)
{
    jpeg_decompress_struct source{};
    jpeg_error_mgr sourceErrors{};
    source.err = jpeg_std_error(&sourceErrors);
    jpeg_create_decompress(&source);
    jpeg_mem_src(&source, reinterpret_cast<const unsigned char*>(baseline.constData()),
                 static_cast<unsigned long>(baseline.size()));
    jpeg_read_header(&source, TRUE);
    jvirt_barray_ptr* coefficients = jpeg_read_coefficients(&source);

    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &buffer, &size);
    jpeg_copy_critical_parameters(&source, &info);
    std::vector<jpeg_scan_info> script;
    if (scans.empty()) {
        jpeg_simple_progression(&info);
    } else {
        for (const ProgressiveScan& scan : scans) {
            jpeg_scan_info s{};
            s.comps_in_scan = int(scan.components.size());
            for (size_t i = 0; i < scan.components.size(); ++i)
                s.component_index[i] = scan.components[i];
            s.Ss = scan.start;
            s.Se = scan.end;
            s.Ah = scan.high;
            s.Al = scan.low;
            script.push_back(s);
        }
        info.scan_info = script.data();
        info.num_scans = int(script.size());
    }
    info.restart_interval = JDIMENSION(restartMcus);
    jpeg_write_coefficients(&info, coefficients);
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    jpeg_finish_decompress(&source);
    jpeg_destroy_decompress(&source);
    const QByteArray file(reinterpret_cast<const char*>(buffer), qsizetype(size));
    std::free(buffer);
    return file;
}

} // namespace kavori::test
