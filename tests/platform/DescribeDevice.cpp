// Describes devices of this machine, one a line, to be run where the machine is made up:
//     veltrano_describe_device MAJOR:MINOR|/dev/NAME...

#include "platform/linux/SysfsDevices.h"

#include <cstdio>
#include <iostream>

int main(int argc, char* argv[]) {
    using namespace veltrano;
    // The database of udev would be that of the real machine.
    const SysfsDevices devices({.udev = "/nonexistent"});
    for (int at = 1; at < argc; ++at) {
        MountEntry mount{.mountPoint = "/m", .fileSystemType = "ext4", .source = "/dev/x"};
        // Without a number the device is looked for by its name.
        if (std::sscanf(argv[at], "%u:%u", &mount.major, &mount.minor) != 2)
            mount.source = argv[at];
        const auto description = devices.describe(mount);
        const DeviceFacts& facts = description.facts;
        std::cout << facts.bsdName << ", " << facts.protocol.value_or("no protocol") << ", "
                  << facts.model.value_or("no model") << ", "
                  << (facts.mediaWritable == "1" ? "writable" : "not writable") << ", "
                  << (facts.internal == 1 ? "inside" : "outside") << ", medium "
                  << static_cast<unsigned>(facts.mediaClass)
                  << (description.isRemovable ? ", removable" : ", fixed") << "\n";
    }
}
