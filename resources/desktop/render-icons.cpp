// Renders the scalable application icon into the PNG sizes desktops ask for, in the
// freedesktop icon theme layout: render-icons ICON.svg OUTPUT-FOLDER NAME SIZE...
// writes OUTPUT-FOLDER/<size>x<size>/apps/NAME.png for each size.

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char** argv)
{
    // A build step has no display; the offscreen platform is enough to paint into images.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args.size() < 4) {
        std::fprintf(stderr, "usage: render-icons ICON.svg OUTPUT-FOLDER NAME SIZE...\n");
        return 2;
    }
    QSvgRenderer svg(args[0]);
    if (!svg.isValid()) {
        std::fprintf(stderr, "render-icons: cannot read %s\n", qPrintable(args[0]));
        return 1;
    }
    for (const QString& sizeText : args.mid(3)) {
        const int size = sizeText.toInt();
        if (size <= 0) {
            std::fprintf(stderr, "render-icons: bad size %s\n", qPrintable(sizeText));
            return 2;
        }
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        svg.render(&painter, QRectF(0, 0, size, size));
        painter.end();
        const QString folder = args[1] + QStringLiteral("/%1x%1/apps").arg(size);
        const QString file = folder + u'/' + args[2] + QStringLiteral(".png");
        if (!QDir().mkpath(folder) || !image.save(file, "PNG")) {
            std::fprintf(stderr, "render-icons: cannot write %s\n", qPrintable(file));
            return 1;
        }
    }
    return 0;
}
