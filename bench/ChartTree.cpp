#include "bench/ChartTree.h"

#include <array>

namespace veltrano {

test::TreeBuilder makeChartTree(int smallFilesInFolder, ChartTreeTop top) {
    constexpr std::array kFoldersIn = {10, 9, 4};  // on rings 1 to 3
    constexpr int kChain = 2;                      // folders one inside the other below each of those
    constexpr std::int64_t kLarge = 1'000'000'000; // bytes
    test::TreeBuilder tree("/large");
    int number = 0;
    auto name = [&number] {
        return "n" + std::to_string(number++);
    };
    FolderSystemItem* start = tree.root();
    if (top == ChartTreeTop::Wrapped) {
        tree.file(tree.root(), name(), kLarge);
        start = tree.folder(tree.root(), name());
    }
    std::vector<FolderSystemItem*> folders{start};
    for (const int count : kFoldersIn) {
        std::vector<FolderSystemItem*> below;
        for (FolderSystemItem* const folder : folders)
            for (int index = 0; index < count; ++index)
                below.push_back(tree.folder(folder, name()));
        folders = std::move(below);
    }
    for (FolderSystemItem* folder : folders) {
        for (int index = 0; index < smallFilesInFolder; ++index)
            tree.file(folder, name(), 4096, static_cast<std::uint8_t>(number % 8));
        for (int index = 0; index < kChain; ++index)
            folder = tree.folder(folder, name());
        tree.file(folder, name(), kLarge, static_cast<std::uint8_t>(number % 8));
    }
    tree.recount();
    return tree;
}

} // namespace veltrano
