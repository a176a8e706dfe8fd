#include "ZipArchive.h"

#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "platform/SafeFiles.h"
#include "runtime/WaitDialog.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <zip.h>

#include <algorithm>

namespace kavori {

namespace {

// Formats whose data is compressed already: deflating them again costs time and saves nothing.
bool isCompressed(const QString& name)
{
    static const QStringList kinds = {
        QStringLiteral("jpg"),  QStringLiteral("jpeg"), QStringLiteral("jpe"),
        QStringLiteral("jfif"), QStringLiteral("gif"),  QStringLiteral("png"),
        QStringLiteral("webp"), QStringLiteral("avif"), QStringLiteral("heic"),
        QStringLiteral("heif"), QStringLiteral("jxl"),  QStringLiteral("zip"),
        QStringLiteral("mp3"),  QStringLiteral("mpg"),  QStringLiteral("mpeg"),
        QStringLiteral("mp4"),  QStringLiteral("avi"),  QStringLiteral("mov"),
        QStringLiteral("webm")};
    return kinds.contains(QFileInfo(name).suffix(), Qt::CaseInsensitive);
}

// What the archive's callbacks share with the job.
struct JobState {
    Progress& progress;
    bool cancelled = false;
};

void reportProgress(zip_t*, double done, void* state)
{
    auto* job = static_cast<JobState*>(state);
    job->progress.setValue(int(done * 1000));
}

int askCancel(zip_t*, void* state)
{
    auto* job = static_cast<JobState*>(state);
    if (!job->cancelled)
        job->cancelled = job->progress.cancelled();
    return job->cancelled ? 1 : 0;
}

ZipOutcome failed(const QString& problem)
{
    return {ZipResult::Failed, problem};
}

} // namespace

QList<ZipEntry> FolderPictureEntries(const QString& folder)
{
    QList<ZipEntry> entries;
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files | QDir::Hidden, QDir::Name);
    for (const QFileInfo& info : files) {
        if (IsImageFile(info.filePath()))
            entries.append({info.absoluteFilePath(), info.fileName()});
    }
    return entries;
}

QList<ZipEntry> FolderTreeEntries(const QString& folder, Progress& progress)
{
    QList<ZipEntry> entries;
    const QDir root(folder);
    const QString top = root.dirName();
    QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        // A long walk keeps the window alive and can be stopped.
        if (entries.size() % 256 == 0 && progress.cancelled())
            return {};
        if (it.fileInfo().isSymLink())
            continue;
        entries.append({path, top + QLatin1Char('/') + root.relativeFilePath(path)});
    }
    std::sort(entries.begin(), entries.end(),
              [](const ZipEntry& a, const ZipEntry& b) { return a.name < b.name; });
    return entries;
}

ZipOutcome WriteZip(const QString& archive, const QList<ZipEntry>& entries, Progress& progress)
{
    // A name of our own beside the destination, so the final rename stays on one volume.
    QString temporary;
    {
        QTemporaryFile reserve(archive + QStringLiteral(".XXXXXX.part"));
        if (!reserve.open())
            return failed(archive);
        temporary = reserve.fileName();
        reserve.setAutoRemove(false);
    }
    int error = 0;
    zip_t* zip = zip_open(QFile::encodeName(temporary).constData(), ZIP_TRUNCATE, &error);
    if (!zip) {
        QFile::remove(temporary);
        return failed(archive);
    }
    JobState job{progress};
    progress.setMaximum(1000);
    zip_register_progress_callback_with_state(zip, 0.001, reportProgress, nullptr, &job);
    zip_register_cancel_callback_with_state(zip, askCancel, nullptr, &job);

    for (const ZipEntry& entry : entries) {
        zip_source_t* source =
            zip_source_file(zip, QFile::encodeName(entry.file).constData(), 0, -1);
        const QByteArray name = entry.name.toUtf8();
        const zip_int64_t index = source ? zip_file_add(zip, name.constData(), source,
                                                        ZIP_FL_OVERWRITE | ZIP_FL_ENC_UTF_8)
                                         : -1;
        if (index < 0) {
            if (source)
                zip_source_free(source);
            zip_discard(zip);
            QFile::remove(temporary);
            return failed(entry.file);
        }
        zip_set_file_compression(zip, zip_uint64_t(index),
                                 isCompressed(entry.name) ? ZIP_CM_STORE : ZIP_CM_DEFLATE, 0);
    }

    // The files are read and compressed here; the callbacks report and may cancel.
    if (zip_close(zip) != 0) {
        const bool cancelled = job.cancelled;
        const QString problem = QString::fromLocal8Bit(zip_strerror(zip));
        zip_discard(zip);
        QFile::remove(temporary);
        return cancelled ? ZipOutcome{ZipResult::Cancelled, {}} : failed(problem);
    }
    // An empty archive is not written by the library at all: make the file one would unpack.
    if (!QFileInfo::exists(temporary)) {
        QFile empty(temporary);
        if (!empty.open(QIODevice::WriteOnly) ||
            empty.write(QByteArray::fromHex("504b0506000000000000000000000000000000000000")) != 22)
            return failed(archive);
    }
    if (!MoveFileOver(temporary, archive)) {
        QFile::remove(temporary);
        return failed(archive);
    }
    return {ZipResult::Done, {}};
}

QString ZipNameFor(const QString& path)
{
    const QFileInfo info(path);
    const QString base = info.isDir() ? QDir(path).dirName() : info.completeBaseName();
    return FolderOf(QDir::cleanPath(info.absoluteFilePath())) + base + QStringLiteral(".zip");
}

} // namespace kavori
