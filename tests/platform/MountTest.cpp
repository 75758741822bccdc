#include "platform/SystemForms.h"

#include "support/ChildProcess.h"
#include "support/RealMounts.h"
#include "support/TestDir.h"

#include <gmock/gmock.h>
#include <sys/mount.h>

namespace veltrano {
namespace {

constexpr const char* kNotPermitted = "not permitted";

class MountTest : public SystemFormTest {
protected:
    /// Runs the work where mounts may be made and expects its answer.
    void expectAnswer(const std::string& expected, const std::function<std::string()>& work) {
        const std::string answer =
            runInChild([&]() -> std::string { return hasPrivateMounts() ? work() : kNotPermitted; });
        if (answer == kNotPermitted)
            GTEST_SKIP() << "this user may not mount";
        EXPECT_EQ(answer, expected);
    }

    bool mountMemory(std::string_view path) const {
        return ::mount("none", m_dir.path(path).c_str(), "tmpfs", 0, nullptr) == 0;
    }

    bool bind(std::string_view from, std::string_view to) const {
        return ::mount(m_dir.path(from).c_str(), m_dir.path(to).c_str(), nullptr, MS_BIND, nullptr) == 0;
    }

    std::string valenceOf(const std::string& name) const {
        const std::uint32_t valence = listPath(*m_catalogue, m_dir.path())[name].entry.valence;
        return valence == kUnknownValence ? "unknown" : std::to_string(valence);
    }

    TestDir m_dir;
};

INSTANTIATE_TEST_SUITE_P(Forms, MountTest, testing::ValuesIn(kSystemForms), nameOfForm);

TEST_P(MountTest, folderUnderAnotherMountLooksEmpty) {
    m_dir.createFolder("inside");
    expectAnswer("0", [this] { return mountMemory("inside") ? valenceOf("inside") : kNotPermitted; });
}

TEST_P(MountTest, folderBesideAMountIsAsEver) {
    m_dir.createFolder("inside");
    m_dir.createFolder("beside");
    expectAnswer("unknown", [this] { return mountMemory("inside") ? valenceOf("beside") : kNotPermitted; });
}

// A portable system tells mounts by their device only, and a bind mount has that of its folder.
TEST_P(MountTest, bindMountLooksEmptyWhereTheSystemTellsIt) {
    m_dir.createFile("source/file");
    m_dir.createFolder("inside");
    const bool isTold = std::string(GetParam().name) == "linux";
    expectAnswer(isTold ? "0" : "unknown",
                 [this] { return bind("source", "inside") ? valenceOf("inside") : kNotPermitted; });
}

TEST_P(MountTest, startFolderMayBeAMountItself) {
    m_dir.createFolder("inside");
    expectAnswer("file folder ", [this]() -> std::string {
        if (!mountMemory("inside"))
            return kNotPermitted;
        m_dir.createFile("inside/file");
        m_dir.createFile("inside/folder/below");
        std::string answer;
        for (const std::string& name : listPath(*m_catalogue, m_dir.path("inside")).names())
            answer += name + " ";
        return answer;
    });
}

TEST_P(MountTest, fileUnderABindMountIsAFile) {
    m_dir.createFile("source", 10'000);
    m_dir.createFile("inside");
    expectAnswer("same size", [this]() -> std::string {
        if (!bind("source", "inside"))
            return kNotPermitted;
        const Listing listing = listPath(*m_catalogue, m_dir.path());
        const CatalogueEntry& inside = listing["inside"].entry;
        const bool isSame = inside.dataPhysicalSize == listing["source"].entry.dataPhysicalSize;
        return !inside.isDirectory && isSame ? "same size" : "another size";
    });
}

TEST_P(MountTest, walkStaysWithinItsMount) {
    m_dir.createFile("file");
    m_dir.createFolder("inside");
    expectAnswer("1", [this]() -> std::string {
        if (!mountMemory("inside"))
            return kNotPermitted;
        m_dir.createFile("inside/hidden");
        return std::to_string(walkTree(*m_catalogue, startFolder(*m_catalogue, m_dir.path())).files);
    });
}

/// The facts of a folder of device 1:1 on mount 7, on a kernel that marks no roots of mounts.
struct statx plainFolder() {
    struct statx facts {};
    facts.stx_mask = STATX_TYPE | STATX_MNT_ID;
    facts.stx_mnt_id = 7;
    facts.stx_dev_major = 1;
    facts.stx_dev_minor = 1;
    return facts;
}

TEST(OtherMountTest, markOfTheKernelDecidesWhereThereIsOne) {
    struct statx entry = plainFolder();
    entry.stx_mnt_id = 8;
    entry.stx_attributes_mask = STATX_ATTR_MOUNT_ROOT;
    EXPECT_FALSE(isOtherMount(entry, plainFolder()));
    entry.stx_attributes = STATX_ATTR_MOUNT_ROOT;
    EXPECT_TRUE(isOtherMount(entry, plainFolder()));
}

TEST(OtherMountTest, numberOfTheMountDecidesWithoutTheMark) {
    struct statx entry = plainFolder();
    entry.stx_dev_minor = 2;
    EXPECT_FALSE(isOtherMount(entry, plainFolder()));
    entry.stx_mnt_id = 8;
    EXPECT_TRUE(isOtherMount(entry, plainFolder()));
}

TEST(OtherMountTest, deviceDecidesWithoutMarkAndNumber) {
    struct statx entry = plainFolder();
    entry.stx_mask = STATX_TYPE;
    entry.stx_mnt_id = 8;
    EXPECT_FALSE(isOtherMount(entry, plainFolder()));
    entry.stx_dev_minor = 2;
    EXPECT_TRUE(isOtherMount(entry, plainFolder()));
    entry.stx_dev_minor = 1;
    entry.stx_dev_major = 2;
    EXPECT_TRUE(isOtherMount(entry, plainFolder()));
}

TEST(OtherMountTest, folderThatWouldMountSomethingWhenTouchedCountsAsMounted) {
    struct statx entry = plainFolder();
    entry.stx_attributes = STATX_ATTR_AUTOMOUNT;
    entry.stx_attributes_mask = STATX_ATTR_MOUNT_ROOT | STATX_ATTR_AUTOMOUNT;
    EXPECT_TRUE(isOtherMount(entry, plainFolder()));
}

} // namespace
} // namespace veltrano
