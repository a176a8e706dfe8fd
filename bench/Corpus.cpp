#include "Corpus.h"

#include <QDir>

QStringList CorpusPhotos()
{
    const QString root = qEnvironmentVariable("KAVORI_CORPUS");
    if (root.isEmpty())
        return {};
    QDir big(root + QStringLiteral("/big"));
    QStringList files;
    for (const QString& name : big.entryList({QStringLiteral("*.jpg")}, QDir::Files, QDir::Name))
        files << big.filePath(name);
    return files;
}

QString CorpusTree()
{
    const QString root = qEnvironmentVariable("KAVORI_CORPUS");
    const QString tree = root + QStringLiteral("/tree/");
    return !root.isEmpty() && QDir(tree).exists() ? tree : QString();
}
