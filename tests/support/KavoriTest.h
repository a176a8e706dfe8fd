#pragma once

#include "PromptRecorder.h"
#include "QtPrinters.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace kavori::test {

// Every test gets a fresh home: $KAVORI_HOME, $HOME, $TMPDIR and $XDG_* point into a new
// temporary folder, message boxes and pickers go to a recorder, and the random source is
// seeded, so no test sees another's files or answers.
class KavoriTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // The temporary root and the program's folder inside it (ending in "/").
    QString root() const;
    QString home() const;

    // Writes bytes to a file under the root (folders are made), returns its full path.
    QString writeFile(const QString& relative, const QByteArray& bytes) const;
    static QByteArray readFile(const QString& path);

    PromptRecorder& prompts() { return *m_recorder; }

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    PromptRecorder* m_recorder = nullptr;
    std::unique_ptr<Prompts> m_previous;
    QHash<QByteArray, QByteArray> m_savedEnv;
};

} // namespace kavori::test
