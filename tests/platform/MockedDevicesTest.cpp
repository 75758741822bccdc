// The devices of a machine that is made up below the system calls, so that the real places are read.

#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace veltrano {
namespace {

using testing::ElementsAre;

struct Close {
    void operator()(std::FILE* stream) const { ::pclose(stream); }
};

class MockedDevicesTest : public testing::Test {
protected:
    void SetUp() override {
        if (std::system("command -v umockdev-run >/dev/null 2>&1") != 0)
            GTEST_SKIP() << "umockdev is not installed; scripts/setup test does that";
    }

    /// What is told of the devices with these numbers or names.
    static std::vector<std::string> described(const std::string& devices) {
        const std::string command = std::string("umockdev-run --device '") + VELTRANO_PLATFORM_FIXTURES +
                                    "/devices/machine.umockdev' -- '" + VELTRANO_DESCRIBE_DEVICE + "' " +
                                    devices;
        const std::unique_ptr<std::FILE, Close> stream(::popen(command.c_str(), "r"));
        std::string text;
        std::array<char, 4096> piece{};
        while (stream && std::fgets(piece.data(), piece.size(), stream.get()))
            text += piece.data();
        std::vector<std::string> lines;
        std::istringstream all(text);
        for (std::string line; std::getline(all, line);)
            lines.push_back(line);
        return lines;
    }
};

TEST_F(MockedDevicesTest, sataDiskIsInside) {
    EXPECT_THAT(described("8:0 8:1"),
                ElementsAre("sda, SATA, Disk Model 4711, writable, inside, medium 0, fixed",
                            "sda1, SATA, Disk Model 4711, writable, inside, medium 0, fixed"));
}

TEST_F(MockedDevicesTest, usbStickIsOutsideAndRemovable) {
    EXPECT_THAT(described("8:16"),
                ElementsAre("sdb, USB, Pocket Stick, not writable, outside, medium 0, removable"));
}

TEST_F(MockedDevicesTest, nvmeCardIsOnPciExpress) {
    EXPECT_THAT(described("/dev/nvme0n1p2"),
                ElementsAre("nvme0n1p2, PCI-Express, Fast Card 1TB, writable, inside, medium 0, fixed"));
}

TEST_F(MockedDevicesTest, memoryCardIsSecureDigital) {
    EXPECT_THAT(described("179:0"),
                ElementsAre("mmcblk0, Secure Digital, SC32G, writable, outside, medium 0, fixed"));
}

TEST_F(MockedDevicesTest, discsAreOfTheirMediaClasses) {
    EXPECT_THAT(described("11:0 11:1"),
                ElementsAre("sr0, SATA, Disc Drive A, not writable, inside, medium 1, removable",
                            "sr1, SATA, Disc Drive B, not writable, inside, medium 2, removable"));
}

TEST_F(MockedDevicesTest, loopDeviceIsAVirtualInterface) {
    EXPECT_THAT(described("7:0"),
                ElementsAre("loop0, Virtual Interface, no model, writable, outside, medium 0, fixed"));
}

TEST_F(MockedDevicesTest, deviceThatIsNotThereHasAProtocolAllTheSame) {
    EXPECT_THAT(described("8:99"),
                ElementsAre("x, Block Device, no model, not writable, outside, medium 0, fixed"));
}

} // namespace
} // namespace veltrano
