#include "MediaPatterns.h"

namespace kavori {

namespace {

const char* const kImagePattern =
    "*.dib;*.bmp;*.gif;*.jpg;*.jif;*.jpe;*.jpeg;*.ico;*.wmf;*.emf;*.rle;*.pcx;*.tga;*.cur";
const char* const kMoviePattern = ";*.avi;*.mpeg;*.mpe;*.mpg;*.mpa;*.enc;*.mov;*.qt;*.m1v;*.mp2";
const char* const kSoundPattern = ";*.mp3;*.wav;*.mid;*.rmi;*.au;*.snd;*.aif;*.aiff;*.aifc";

} // namespace

QString DuplicatePattern(bool movies, bool sounds)
{
    QString pattern = QString::fromLatin1(kImagePattern);
    if (movies)
        pattern += QString::fromLatin1(kMoviePattern);
    if (sounds)
        pattern += QString::fromLatin1(kSoundPattern);
    return pattern;
}

QStringList DuplicateExtensions(bool movies, bool sounds)
{
    QStringList extensions;
    for (const QString& p : DuplicatePattern(movies, sounds).split(u';'))
        extensions << p.mid(1).toUpper();
    return extensions;
}

} // namespace kavori
