// Makes the demo show of resources/home/Slides/Demo: ten pictures drawn from gradients and
// shapes, a background texture, a chime (WAV), a short tune (MIDI) written note by note, and
// Demo.KAV, which plays them with transitions of every family, descriptions in several places
// and colour and texture backgrounds. Build and run:
//   g++ -std=c++17 -fPIC make-demo.cpp $(pkg-config --cflags --libs Qt6Gui) -o make-demo
//   QT_QPA_PLATFORM=offscreen ./make-demo resources/home/Slides/Demo
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>
#include <QtEndian>

#include <cmath>
#include <vector>

static QString out;

static void landscape(const char* file, int w, int h, QColor sky1, QColor sky2, QColor land,
                      const char* title, int seed, bool stars = false, bool sea = false)
{
    QImage im(w, h, QImage::Format_RGB32);
    QPainter p(&im);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient g(0, 0, 0, h);
    g.setColorAt(0, sky1);
    g.setColorAt(0.65, sky2);
    p.fillRect(im.rect(), g);
    QRandomGenerator r(seed);
    if (stars) {
        p.setPen(Qt::NoPen);
        for (int i = 0; i < 300; ++i) {
            p.setBrush(QColor(255, 255, 255, 80 + r.bounded(175)));
            p.drawEllipse(QPointF(r.bounded(w), r.bounded(h * 6 / 10)), 1.2, 1.2);
        }
    }
    QRadialGradient sun(w * 0.7, h * 0.35, h / 6.0);
    sun.setColorAt(0, QColor(255, 250, 220));
    sun.setColorAt(1, QColor(255, 250, 220, 0));
    p.fillRect(im.rect(), sun);
    for (int layer = 0; layer < 3; ++layer) {
        QPainterPath path;
        path.moveTo(0, h);
        double y = h * (0.55 + 0.12 * layer);
        for (int x = 0; x <= w; x += 40) {
            y += (r.generateDouble() - 0.5) * (sea && layer == 0 ? 6 : 40);
            path.lineTo(x, y);
        }
        path.lineTo(w, h);
        path.closeSubpath();
        p.fillPath(path, land.darker(100 + layer * 35));
    }
    QFont f;
    f.setPixelSize(h / 11);
    f.setBold(true);
    p.setFont(f);
    p.setPen(QColor(255, 255, 255, 220));
    p.drawText(QRect(0, h / 18, w, h / 7), Qt::AlignHCenter, title);
    p.end();
    im.save(out + "/" + file, "JPEG", 85);
}

static void texture()
{
    QImage im(64, 64, QImage::Format_RGB32);
    QRandomGenerator r(7);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) {
            const int v = 200 + r.bounded(24) + ((x + y) % 16 < 2 ? -18 : 0);
            im.setPixel(x, y, qRgb(v, v - 8, v - 26));
        }
    im.save(out + "/Canvas.bmp", "BMP");
}

static void chime()
{
    const int rate = 22050;
    const int samples = rate * 3 / 2;
    QByteArray data;
    for (int i = 0; i < samples; ++i) {
        const double t = double(i) / rate;
        const double v = std::exp(-3.0 * t) * (0.5 * std::sin(2 * M_PI * 880 * t) +
                                               0.3 * std::sin(2 * M_PI * 1320 * t) +
                                               0.2 * std::sin(2 * M_PI * 1760 * t));
        const qint16 s = qint16(v * 20000);
        data.append(char(s & 0xff)).append(char((s >> 8) & 0xff));
    }
    QByteArray wav("RIFF");
    auto u32 = [&](quint32 v) { wav.append(reinterpret_cast<const char*>(&v), 4); };
    auto u16 = [&](quint16 v) { wav.append(reinterpret_cast<const char*>(&v), 2); };
    u32(36 + data.size());
    wav.append("WAVEfmt ");
    u32(16);
    u16(1);
    u16(1);
    u32(rate);
    u32(rate * 2);
    u16(2);
    u16(16);
    wav.append("data");
    u32(data.size());
    wav.append(data);
    QFile f(out + "/Chime.wav");
    f.open(QIODevice::WriteOnly);
    f.write(wav);
}

static void tune()
{
    // One track: tempo, a piano, then a little melody over held chords.
    std::vector<unsigned char> t = {0x00, 0xFF, 0x51, 0x03, 0x07, 0xA1, 0x20, // 120 bpm
                                    0x00, 0xC0, 0x00, 0x00, 0xC1, 0x30};
    auto delta = [&](unsigned v) {
        unsigned char buf[4];
        int n = 0;
        buf[n++] = v & 0x7f;
        while (v >>= 7)
            buf[n++] = 0x80 | (v & 0x7f);
        while (n)
            t.push_back(buf[--n]);
    };
    const int melody[] = {72, 74, 76, 79, 76, 74, 72, 67, 69, 72, 74, 72};
    const int chords[] = {48, 53, 55, 48};
    for (int bar = 0; bar < 4; ++bar) {
        delta(0);
        t.insert(t.end(), {0x91, (unsigned char)chords[bar], 0x40});
        for (int n = 0; n < 3; ++n) {
            const int note = melody[bar * 3 + n];
            delta(0);
            t.insert(t.end(), {0x90, (unsigned char)note, 0x60});
            delta(n == 2 ? 480 : 240);
            t.insert(t.end(), {0x80, (unsigned char)note, 0x40});
        }
        delta(0);
        t.insert(t.end(), {0x81, (unsigned char)chords[bar], 0x40});
    }
    delta(0);
    t.insert(t.end(), {0xFF, 0x2F, 0x00});
    QByteArray mid("MThd");
    const unsigned char header[] = {0, 0, 0, 6, 0, 0, 0, 1, 0x01, 0xE0};
    mid.append(reinterpret_cast<const char*>(header), sizeof header);
    mid.append("MTrk");
    const quint32 len = qToBigEndian(quint32(t.size()));
    mid.append(reinterpret_cast<const char*>(&len), 4);
    mid.append(reinterpret_cast<const char*>(t.data()), int(t.size()));
    QFile f(out + "/Tune.mid");
    f.open(QIODevice::WriteOnly);
    f.write(mid);
}

struct Row {
    const char* file;
    const char* description;
    int transition;
    const char* sound;
    int location, enlarge, shrink, backMode, backColor;
    const char* texture;
    const char* props; // empty: the default look
};

static void show()
{
    // Description looks: custom, place, speed, font, size, style, colour, back, back colour,
    // border, shadow, distance, direction, shadow colour.
    const char* bottom = "1,5,5,DejaVu Sans,22,1,16777215,1,4210752,1,1,2,3,0";
    const Row rows[] = {
        {"Morning.jpg", "Morning light over the hills", 34, "Tune.mid", 0, 1, 1, 0, 0, "", bottom},
        {"Harbour.jpg", "Boats waiting for the tide", 2, "", 0, 1, 1, 0, 0, "",
         "1,4,5,DejaVu Serif,26,2,16777215,0,0,0,1,3,3,0"},
        {"Noon.jpg", "High noon", 6, "", 0, 1, 1, 0, 0, "",
         "1,21,3,DejaVu Sans,28,1,65535,0,0,2,1,2,3,0"},
        {"Lighthouse.jpg", "The lighthouse keeps its watch", 10, "", 1, 0, 1, 1, 0x503020, "",
         "1,9,5,DejaVu Sans,20,0,16777215,1,0,1,0,0,3,0"},
        {"Forest.jpg", "Deep in the forest", 14, "", 0, 1, 1, 0, 0, "",
         "1,20,8,DejaVu Sans,30,1,13434828,0,0,0,1,3,3,0"},
        {"Snow.jpg", "Fresh snow on the pass", 18, "Chime.wav", 0, 1, 1, 0, 0, "", bottom},
        {"Postcard.jpg", "A postcard on the table", 22, "", 0, 0, 1, 2, 0, "Canvas.bmp",
         "1,4,5,DejaVu Serif,24,3,2105376,1,15790320,2,0,0,3,0"},
        {"Desert.jpg", "Dunes at dusk", 26, "", 0, 1, 1, 0, 0, "",
         "1,15,5,DejaVu Sans,24,1,16777215,0,0,0,1,1,3,0"},
        {"Lake.jpg", "Still water", 30, "", 0, 1, 1, 0, 0, "", bottom},
        {"Evening.jpg", "Evening comes", 38, "", 0, 1, 1, 0, 0, "",
         "1,0,5,DejaVu Serif,32,2,16777215,1,8388608,1,1,2,3,0"},
        {"Night.jpg", "A night full of stars", 46, "", 0, 1, 1, 0, 0, "",
         "1,19,5,DejaVu Sans,24,0,16777215,0,0,0,1,1,0,8421504"},
        {"Meadow.jpg", "Meadow in bloom", 51, "", 0, 1, 1, 0, 0, "", bottom},
        {"Lighthouse.jpg", "Back to the sea", 53, "", 8, 0, 1, 1, 0x203050, "",
         "1,6,5,DejaVu Sans,20,1,16777215,0,0,1,0,0,3,0"},
        {"Harbour.jpg", "Home port", 55, "", 0, 1, 1, 0, 0, "", bottom},
        {"Morning.jpg", "And another morning", 8, "", 0, 1, 1, 0, 0, "",
         "1,3,5,DejaVu Sans,22,1,16777215,1,0,1,1,1,3,0"},
    };
    QStringList lines = {"\"Kavori Slide Show\"", "\"Version 3.0\"", "3", "\"\"", "0", "0", "4",
                         "0", "0", "-1", "-1", "-1", "0",
                         "\"A day and a night in fifteen slides, made for Kavori.\"", "-1", "0",
                         "0", "0", "\"3\"", "\"0\"", "\"01\"", "-1", "\"\""};
    auto q = [](const char* s) { return QStringLiteral("\"%1\"").arg(QString::fromUtf8(s)); };
    for (const Row& r : rows) {
        lines << q(r.file) << q(r.description) << QString::number(r.transition) << q(r.sound)
              << QString::number(r.location) << "0" << "0" << QString::number(r.enlarge)
              << QString::number(r.shrink) << "4" << QString::number(r.backMode)
              << QString::number(r.backColor) << q(r.texture) << q(r.props);
    }
    QFile f(out + "/Demo.KAV");
    f.open(QIODevice::WriteOnly);
    f.write(lines.join("\r\n").toUtf8() + "\r\n");
}

int main(int c, char** v)
{
    QGuiApplication a(c, v);
    out = c > 1 ? QString::fromLocal8Bit(v[1]) : QStringLiteral(".");
    landscape("Morning.jpg", 1280, 720, QColor(255, 170, 110), QColor(255, 220, 170),
              QColor(70, 110, 70), "Morning", 1);
    landscape("Noon.jpg", 1280, 720, QColor(60, 130, 220), QColor(170, 210, 250),
              QColor(90, 140, 60), "Noon", 2);
    landscape("Evening.jpg", 1280, 720, QColor(40, 30, 90), QColor(220, 100, 80),
              QColor(40, 50, 60), "Evening", 3);
    landscape("Harbour.jpg", 1280, 720, QColor(120, 170, 220), QColor(200, 225, 245),
              QColor(40, 90, 140), "Harbour", 4, false, true);
    landscape("Forest.jpg", 1280, 720, QColor(90, 140, 110), QColor(170, 200, 160),
              QColor(30, 80, 40), "Forest", 5);
    landscape("Snow.jpg", 1280, 720, QColor(150, 180, 220), QColor(235, 240, 250),
              QColor(225, 230, 240), "Snow", 6);
    landscape("Desert.jpg", 1280, 720, QColor(230, 140, 90), QColor(250, 210, 150),
              QColor(200, 150, 90), "Desert", 7);
    landscape("Lake.jpg", 1280, 720, QColor(90, 120, 170), QColor(190, 210, 230),
              QColor(60, 100, 130), "Lake", 8, false, true);
    landscape("Night.jpg", 1280, 720, QColor(5, 10, 40), QColor(30, 40, 90), QColor(10, 15, 30),
              "Night", 9, true);
    landscape("Meadow.jpg", 1280, 720, QColor(110, 170, 240), QColor(200, 230, 250),
              QColor(120, 170, 60), "Meadow", 10);
    landscape("Lighthouse.jpg", 480, 640, QColor(70, 110, 180), QColor(180, 210, 240),
              QColor(50, 80, 120), "Lighthouse", 11, false, true);
    landscape("Postcard.jpg", 640, 420, QColor(240, 160, 120), QColor(250, 220, 190),
              QColor(120, 90, 60), "Greetings", 12);
    texture();
    chime();
    tune();
    show();
}
