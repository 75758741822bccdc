#include "support/RealMounts.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <linux/fuse.h>
#include <linux/loop.h>
#include <poll.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <unistd.h>
#include <utility>

namespace veltrano {

namespace {

bool makeFileSystem(const std::string& file, std::int64_t bytes) {
    const int descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    const bool isSized = descriptor >= 0 && ::ftruncate(descriptor, bytes) == 0;
    if (descriptor >= 0)
        ::close(descriptor);
    const std::string command = "PATH=$PATH:/usr/sbin:/sbin mkfs.ext4 -q -F '" + file + "' >/dev/null 2>&1";
    return isSized && std::system(command.c_str()) == 0;
}

/// Ties a free loop device to the file and answers it open, or -1. The tie ends with the last user.
int attach(const std::string& file, std::string& device) {
    const int control = ::open("/dev/loop-control", O_RDWR | O_CLOEXEC);
    const int backing = ::open(file.c_str(), O_RDWR | O_CLOEXEC);
    int loop = -1;
    // Another process may take the free device first.
    for (int attempt = 0; control >= 0 && backing >= 0 && loop < 0 && attempt < 16; ++attempt) {
        const int number = ::ioctl(control, LOOP_CTL_GET_FREE);
        if (number < 0)
            break;
        device = "/dev/loop" + std::to_string(number);
        loop = ::open(device.c_str(), O_RDWR | O_CLOEXEC);
        if (loop < 0)
            break;
        if (::ioctl(loop, LOOP_SET_FD, backing) != 0)
            ::close(std::exchange(loop, -1));
    }
    if (loop >= 0) {
        loop_info64 info{};
        info.lo_flags = LO_FLAGS_AUTOCLEAR;
        if (::ioctl(loop, LOOP_SET_STATUS64, &info) != 0) {
            ::ioctl(loop, LOOP_CLR_FD);
            ::close(std::exchange(loop, -1));
        }
    }
    for (const int descriptor : {control, backing})
        if (descriptor >= 0)
            ::close(descriptor);
    return loop;
}

/// Answers the kernel's first message, without which it takes no questions for the file system.
bool greetKernel(int server) {
    std::array<char, FUSE_MIN_READ_BUFFER> message{};
    fuse_in_header question{};
    if (::read(server, message.data(), message.size()) < static_cast<ssize_t>(sizeof question))
        return false;
    std::memcpy(&question, message.data(), sizeof question);
    struct {
        fuse_out_header header;
        fuse_init_out body;
    } answer{};
    answer.header = {.len = sizeof answer, .error = 0, .unique = question.unique};
    answer.body.major = FUSE_KERNEL_VERSION;
    answer.body.minor = FUSE_KERNEL_MINOR_VERSION;
    answer.body.max_write = 4096;
    return question.opcode == FUSE_INIT &&
           ::write(server, &answer, sizeof answer) == static_cast<ssize_t>(sizeof answer);
}

} // namespace

bool hasPrivateMounts() {
    return ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

LoopDisk::LoopDisk(const std::string& file, std::int64_t bytes, std::string mountPoint)
    : m_mountPoint(std::move(mountPoint)) {
    std::string device;
    const int loop = makeFileSystem(file, bytes) ? attach(file, device) : -1;
    if (loop < 0)
        return;
    m_bMounted = ::mount(device.c_str(), m_mountPoint.c_str(), "ext4", 0, nullptr) == 0;
    ::close(loop);
}

LoopDisk::~LoopDisk() {
    unmount();
}

bool LoopDisk::unmount() {
    return std::exchange(m_bMounted, false) && ::umount2(m_mountPoint.c_str(), MNT_DETACH) == 0;
}

DeadMount::DeadMount(std::string mountPoint) : m_mountPoint(std::move(mountPoint)) {
    const int server = ::open("/dev/fuse", O_RDWR | O_CLOEXEC);
    if (server < 0)
        return;
    const std::string options = "fd=" + std::to_string(server) +
                                ",rootmode=40000,user_id=" + std::to_string(::geteuid()) +
                                ",group_id=" + std::to_string(::getegid());
    if (::mount("server:/folder", m_mountPoint.c_str(), "fuse.sshfs", MS_NODEV | MS_NOSUID,
                options.c_str()) == 0) {
        m_nServer = server;
        m_bMounted = greetKernel(server);
    } else {
        ::close(server);
    }
}

DeadMount::~DeadMount() {
    giveUp();
    if (m_bMounted)
        ::umount2(m_mountPoint.c_str(), MNT_DETACH);
}

bool DeadMount::waitForQuestion(int seconds) {
    constexpr int kMillis = 1000;
    pollfd questions{m_nServer, POLLIN, 0};
    return ::poll(&questions, 1, seconds * kMillis) == 1 && (questions.revents & POLLIN) != 0;
}

void DeadMount::giveUp() {
    if (m_nServer >= 0)
        ::close(std::exchange(m_nServer, -1));
}

} // namespace veltrano
