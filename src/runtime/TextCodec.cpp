#include "TextCodec.h"

#include <QStringDecoder>

namespace kavori {

QString DecodeText(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (!utf8.hasError())
        return text;
    return QString::fromLatin1(bytes);
}

QByteArray EncodeText(const QString& text)
{
    return text.toUtf8();
}

} // namespace kavori
