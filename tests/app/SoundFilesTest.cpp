#include "app/SoundFiles.h"

#include <QFile>

#include <gtest/gtest.h>

namespace veltrano {
namespace {

TEST(SoundFiles, everySoundIsAWaveFile) {
    SoundFiles files;
    for (const char* name : {"Pop", "Tink", "Submarine"}) {
        QFile file(QString::fromStdString(files.fileOfSound(name)));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        const QByteArray start = file.read(12);
        EXPECT_TRUE(start.startsWith("RIFF")) << name;
        EXPECT_TRUE(start.endsWith("WAVE")) << name;
    }
}

TEST(SoundFiles, anUnknownSoundHasNoFile) {
    EXPECT_TRUE(SoundFiles().fileOfSound("Gong").empty());
}

TEST(SoundFiles, theFilesGoWithTheirOwner) {
    QString path;
    {
        SoundFiles files;
        path = QString::fromStdString(files.fileOfSound("Pop"));
        ASSERT_TRUE(QFile::exists(path));
    }
    EXPECT_FALSE(QFile::exists(path));
}

} // namespace
} // namespace veltrano
