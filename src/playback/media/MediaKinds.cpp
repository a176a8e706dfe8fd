#include "MediaKinds.h"

namespace kavori {

namespace {

QString UpperExtension(const QString& file)
{
    const qsizetype slash = qMax(file.lastIndexOf(u'/'), file.lastIndexOf(u'\\'));
    const qsizetype dot = file.lastIndexOf(u'.');
    return dot > slash ? file.mid(dot).toUpper() : QString();
}

bool OneOf(const QString& extension, std::initializer_list<const char*> list)
{
    for (const char* e : list) {
        if (extension == QLatin1String(e))
            return true;
    }
    return false;
}

} // namespace

SoundKind SoundKindOf(const QString& file)
{
    const QString ext = UpperExtension(file);
    if (ext == QLatin1String(".WAV"))
        return SoundKind::Wave;
    if (OneOf(ext, {".MID", ".RMI"}))
        return SoundKind::Midi;
    if (OneOf(ext, {".MP3", ".AU", ".SND", ".AIF", ".AIFF", ".AIFC"}))
        return SoundKind::MciAudio;
    return SoundKind::None;
}

QString MovieDeviceType(const QString& file)
{
    return UpperExtension(file) == QLatin1String(".AVI") ? QStringLiteral("AVIVideo")
                                                         : QStringLiteral("MPEGVideo");
}

} // namespace kavori
