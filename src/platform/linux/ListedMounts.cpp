#include "platform/linux/ListedMounts.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace veltrano {

namespace {

constexpr std::array<std::string_view, 20> kNetworkTypes = {
    "nfs",      "nfs4",  "cifs", "smb3",  "smbfs", "afs",  "ceph", "glusterfs", "lustre", "beegfs",
    "orangefs", "pvfs2", "coda", "ncpfs", "davfs", "gpfs", "acfs", "fhgfs",     "panfs",  "sshfs"};

/// FUSE file systems of other machines, behind "fuse.".
constexpr std::array<std::string_view, 20> kNetworkFuseTypes = {
    "sshfs",         "rclone", "glusterfs", "ceph",      "ceph-fuse",
    "davfs2",        "davfs",  "s3fs",      "smbnetfs",  "gcsfuse",
    "curlftpfs",     "mfs",    "juicefs",   "JuiceFS",   "mount-s3",
    "mountpoint-s3", "goofys", "nfs",       "seaweedfs", "google-drive-ocamlfuse"};

/// Local storage that shows no device of its own.
constexpr std::array<std::string_view, 10> kPoolTypes = {
    "btrfs",      "bcachefs",       "zfs",        "9p",    "virtiofs", "fuse.mergerfs",
    "fuse.encfs", "fuse.gocryptfs", "fuse.cryfs", "vboxsf"};

/// What a live system or a container may have at "/", and what is none of a person's volumes elsewhere.
constexpr std::array<std::string_view, 6> kRootOnlyTypes = {"overlay", "aufs",   "tmpfs",
                                                            "ramfs",   "rootfs", "fuse.fuse-overlayfs"};

/// Read-only images in which packages are delivered.
constexpr std::array<std::string_view, 4> kPackageTypes = {"squashfs", "erofs", "cramfs", "romfs"};

constexpr unsigned kLoopMajor = 7;
constexpr unsigned kMemoryDiskMajor = 1;

template <std::size_t Count>
bool isAmong(const std::array<std::string_view, Count>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool isOnDevice(const MountEntry& mount) {
    return mount.major != 0 || mount.source.starts_with("/dev/");
}

bool isPackageImage(const MountEntry& mount) {
    const bool isLoop = mount.major == kLoopMajor || mount.source.starts_with("/dev/loop");
    return isLoop && mount.mountPoint != "/" && isAmong(kPackageTypes, mount.fileSystemType);
}

bool isVolume(const MountEntry& mount) {
    if (mount.mountPoint.ends_with("//deleted") || mount.fileSystemType.empty() || isPackageImage(mount))
        return false;
    if (isAmong(kRootOnlyTypes, mount.fileSystemType))
        return mount.mountPoint == "/";
    if (isNetworkMount(mount) || isAmong(kPoolTypes, mount.fileSystemType))
        return true;
    // devtmpfs and its like have no device; neither has a FUSE file system without one below it.
    return isOnDevice(mount) && mount.major != kMemoryDiskMajor;
}

/// Tells which mounts can't be reached by their path, because another stands on them or above them.
class Cover {
public:
    explicit Cover(const std::vector<MountEntry>& table) {
        for (const MountEntry& mount : table) {
            m_mounts.emplace(mount.id, &mount);
            if (mount.id != mount.parent) // the first of all mounts stands on itself
                m_children[mount.parent].insert(mount.mountPoint);
        }
    }

    bool isCovered(const MountEntry& mount) const {
        // The chain of parents of a sound table ends within the number of its mounts; a damaged one may turn
        // in a circle.
        const MountEntry* current = &mount;
        for (std::size_t steps = 0; current && steps <= m_mounts.size(); ++steps) {
            if (current != &mount ? isShadowedByParent(*current) : isTopCovered(mount))
                return true;
            const auto parent = m_mounts.find(current->parent);
            const bool isOwnParent = parent != m_mounts.end() && parent->second == current;
            current = parent == m_mounts.end() || isOwnParent ? nullptr : parent->second;
        }
        return false;
    }

private:
    bool hasChild(int mount, std::string_view path) const {
        const auto children = m_children.find(mount);
        return children != m_children.end() && children->second.contains(std::string(path));
    }

    bool isTopCovered(const MountEntry& mount) const {
        return hasChild(mount.id, mount.mountPoint) || isShadowedByParent(mount);
    }

    /// Whether the mount below has another mount on a folder above this one's. It came later, or this one
    /// would stand on it.
    bool isShadowedByParent(const MountEntry& mount) const {
        std::string_view above = mount.mountPoint;
        while (above.size() > 1) {
            above = above.substr(0, std::max<std::size_t>(above.rfind('/'), 1));
            if (hasChild(mount.parent, above))
                return true;
        }
        return false;
    }

    std::unordered_map<int, const MountEntry*> m_mounts; // into the table
    std::unordered_map<int, std::unordered_set<std::string>> m_children;
};

/// What must be the same for two mounts to show the same files, as far as the root of the mount goes.
std::string identity(const MountEntry& mount) {
    std::string key = std::to_string(mount.major) + ":" + std::to_string(mount.minor) + " ";
    if (mount.fileSystemType == "btrfs")
        // The root of a mounted subvolume is its own; that of a bind mount below it goes on.
        for (std::string_view options = mount.superOptions; !options.empty();) {
            const auto end = options.find(',');
            if (options.substr(0, end).starts_with("subvol="))
                key += options.substr(0, end);
            options = end == std::string_view::npos ? std::string_view() : options.substr(end + 1);
        }
    // A server has one number for several of its folders on some systems, and their sources tell them apart.
    if (mount.major == 0 && (mount.minor == 0 || !mount.source.starts_with("/dev/")))
        key += " " + mount.source;
    return key;
}

} // namespace

bool isNetworkMount(const MountEntry& mount) {
    constexpr std::string_view kFuse = "fuse.";
    const std::string_view type = mount.fileSystemType;
    if (isAmong(kNetworkTypes, type))
        return true;
    if (type == "9p")
        return hasOption(mount.superOptions, "trans=tcp") || hasOption(mount.superOptions, "trans=rdma");
    if (!type.starts_with(kFuse) || isAmong(kPoolTypes, type))
        return false;
    if (isAmong(kNetworkFuseTypes, type.substr(kFuse.size())))
        return true;
    const std::string_view source = mount.source;
    if (source.starts_with('/'))
        return source.starts_with("//");
    // "server:/folder", "user@server:folder".
    const auto colon = source.find(':');
    return colon != std::string_view::npos &&
           (source.substr(colon + 1).starts_with('/') || source.substr(0, colon).find('@') != source.npos);
}

std::vector<MountEntry> listedMounts(const std::vector<MountEntry>& table) {
    const Cover cover(table);
    // Of the mounts of one device the one that shows most of it stands for all: that with the shortest root,
    // the first of several. The one at "/" is known to everybody and goes before all.
    const auto isBetter = [](const MountEntry& mount, const MountEntry& other) {
        const bool isRoot = mount.mountPoint == "/";
        const bool isOtherRoot = other.mountPoint == "/";
        return isRoot != isOtherRoot ? isRoot : mount.root.size() < other.root.size();
    };
    std::unordered_map<std::string, const MountEntry*> shown;
    for (const MountEntry& mount : table) {
        if (!isVolume(mount) || cover.isCovered(mount))
            continue;
        const MountEntry*& best = shown[identity(mount)];
        if (!best || isBetter(mount, *best))
            best = &mount;
    }
    std::unordered_set<const MountEntry*> kept;
    for (const auto& [key, mount] : shown)
        kept.insert(mount);
    std::vector<MountEntry> listed;
    for (const MountEntry& mount : table)
        if (kept.contains(&mount))
            listed.push_back(mount);
    return listed;
}

} // namespace veltrano
