#include "platform/posix/OpenFolder.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace veltrano {
namespace {

TEST(OpenFolderTest, openErrorsOfAFolderThatIsNoMoreMeanGone) {
    for (const int error : {ENOENT, ENOTDIR, ELOOP, ESTALE, EIO, ENXIO, ENODEV, ENAMETOOLONG})
        EXPECT_EQ(statusOfOpenError(error), CatalogueStatus::Gone) << error;
}

TEST(OpenFolderTest, openErrorsOfAFolderThatIsThereLeaveItToTheFirstRead) {
    for (const int error : {EACCES, EPERM, EMFILE, ENFILE, ENOMEM})
        EXPECT_EQ(statusOfOpenError(error), CatalogueStatus::Ok) << error;
}

TEST(OpenFolderTest, readErrorsOfADeletedFolderMeanItsEnd) {
    for (const int error : {ENOENT, ESTALE})
        EXPECT_EQ(statusOfReadError(error), CatalogueStatus::EndOfFolder) << error;
}

TEST(OpenFolderTest, otherReadErrorsMeanDenied) {
    for (const int error : {EACCES, EPERM, EIO, ENOMEM, EOVERFLOW})
        EXPECT_EQ(statusOfReadError(error), CatalogueStatus::Denied) << error;
}

} // namespace
} // namespace veltrano
