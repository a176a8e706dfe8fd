#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>
// Makes the demo pictures of resources/home/Slides/Demo: soft landscapes drawn from gradients,
// each with its title. Build and run:
//   g++ -fPIC make-demo-pictures.cpp $(pkg-config --cflags --libs Qt6Gui) -o make-demo-pictures
//   QT_QPA_PLATFORM=offscreen ./make-demo-pictures resources/home/Slides/Demo
static QString out;
static void make(const char* file, QColor sky1, QColor sky2, QColor land, const char* title, int seed){
  const int W=1280,H=720; QImage im(W,H,QImage::Format_RGB32); QPainter p(&im); p.setRenderHint(QPainter::Antialiasing);
  QLinearGradient g(0,0,0,H); g.setColorAt(0,sky1); g.setColorAt(0.65,sky2); p.fillRect(im.rect(),g);
  QRandomGenerator r(seed);
  QRadialGradient sun(W*0.7,H*0.35,120); sun.setColorAt(0,QColor(255,250,220)); sun.setColorAt(1,QColor(255,250,220,0)); p.fillRect(im.rect(),sun);
  for(int layer=0;layer<3;layer++){ QPainterPath path; path.moveTo(0,H); double y=H*(0.55+0.12*layer);
    for(int x=0;x<=W;x+=40){ y+= (r.generateDouble()-0.5)*40; path.lineTo(x,y);} path.lineTo(W,H); path.closeSubpath();
    QColor c=land.darker(100+layer*35); p.fillPath(path,c);}
  QFont f; f.setPixelSize(64); f.setBold(true); p.setFont(f); p.setPen(QColor(255,255,255,220)); p.drawText(QRect(0,40,W,100),Qt::AlignHCenter,title);
  p.end(); im.save(out + "/" + file,"JPEG",85);}
int main(int c,char**v){QGuiApplication a(c,v); out = c > 1 ? QString::fromLocal8Bit(v[1]) : QStringLiteral(".");
 make("Morning.jpg",QColor(255,170,110),QColor(255,220,170),QColor(70,110,70),"Morning",1);
 make("Noon.jpg",QColor(60,130,220),QColor(170,210,250),QColor(90,140,60),"Noon",2);
 make("Evening.jpg",QColor(40,30,90),QColor(220,100,80),QColor(40,50,60),"Evening",3);}
