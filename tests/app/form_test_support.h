#pragma once
// What the tests of the real windows share: the sample job copied where a test wants it, and the
// stand-in suite tool installed under a tool's name.

#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>

namespace tessel {

// Copies every file of the sample job into `folder`; false when one could not be copied.
inline bool CopySampleJob(const QString& folder) {
  const QDir samples(QStringLiteral(TESSEL_SAMPLES_DIR));
  for (const QString& name : samples.entryList({QStringLiteral("T12NR04E.*")}, QDir::Files)) {
    if (!QFile::copy(samples.filePath(name), QDir(folder).filePath(name))) return false;
  }
  return true;
}

#ifdef TESSEL_STANDIN
// The stand-in tool as `name` in `tools`, runnable; false when it could not be put there.
inline bool InstallStandin(const QString& tools, const QString& name) {
  const QString path = QDir(tools).filePath(name);
  return QFile::copy(QStringLiteral(TESSEL_STANDIN), path) &&
         QFile::setPermissions(path, QFile::permissions(QStringLiteral(TESSEL_STANDIN)));
}
#endif

}  // namespace tessel
