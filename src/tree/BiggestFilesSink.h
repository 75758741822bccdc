#pragma once

#include <cstdint>

namespace veltrano {

class FileSystemItem;

/// Where a scan offers its files: the list of the biggest ones. Main thread. Outlives the scan.
class BiggestFilesSink {
public:
    virtual ~BiggestFilesSink() = default;

    /// The size from which on a file may enter the list, bytes; 0 while the list is not full.
    virtual std::int64_t getPorogforScan() const = 0;

    /// Offers a file or package; answers whether the list changed. With `bCheckforExist` the item may be
    /// there already and has grown.
    virtual bool tryAddtoScanArray(FileSystemItem* item, std::int64_t porog, bool bCheckforExist) = 0;

    /// The list is to be shown anew.
    virtual void tryUpdateTableByScanning() = 0;
};

} // namespace veltrano
