#include "app/SoundFiles.h"

#include <QFile>

namespace veltrano {

std::string SoundFiles::fileOfSound(std::string_view name) {
    if (!m_pFolder)
        m_pFolder = std::make_unique<QTemporaryDir>();
    const QString file =
        QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())) + QStringLiteral(".wav");
    const QString path = m_pFolder->filePath(file);
    if (!QFile::exists(path) && !QFile::copy(QStringLiteral(":/sounds/") + file, path))
        return {};
    return QFile::encodeName(path).toStdString();
}

} // namespace veltrano
