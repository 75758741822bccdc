#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace veltrano {

/// Receives a tree, folder by folder, depth first.
class TreePlanSink {
public:
    virtual ~TreePlanSink() = default;
    virtual void enterFolder(const std::string& name) = 0;
    virtual void leaveFolder() = 0;
    /// `size` is the apparent size in bytes, `filled` how many of them have content; the rest is a hole.
    virtual void file(const std::string& name, std::int64_t size, std::int64_t filled) = 0;
    virtual void symbolicLink(const std::string& name, const std::string& target) = 0;
};

/// A random sequence that is the same on every machine.
class PlanRandom {
public:
    explicit PlanRandom(std::uint64_t seed) : m_nState(seed) {}
    std::uint64_t next();
    /// 0 to limit - 1; limit is above 0.
    std::uint64_t below(std::uint64_t limit) { return next() % limit; }
    bool oneIn(std::uint64_t limit) { return below(limit) == 0; }

private:
    std::uint64_t m_nState;
};

/// A tree as people have them: most folders hold a handful of files, a few hold thousands; names are words
/// with numbers, camera names or long hashes; one file in a hundred is a symbolic link; some folders are
/// packages, hidden or empty. `files` counts everything that is no folder. The same arguments give the same
/// tree.
void planRealisticTree(TreePlanSink& sink, std::uint64_t files, std::uint64_t seed);

/// One folder of so many files.
void planWideFolder(TreePlanSink& sink, std::uint64_t files);

/// So many folders, each in the one before, and a file in each.
void planChain(TreePlanSink& sink, std::uint64_t folders);

} // namespace veltrano
