#pragma once

#include "platform/FileCatalogue.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace veltrano {

/// An entry with its name kept.
struct SeenEntry {
    std::string name;
    CatalogueEntry entry;
    CatalogueRef reference; ///< Filled in for folders.
};

/// What reading a folder to its end came to.
struct Listing {
    std::vector<SeenEntry> entries;
    std::vector<std::size_t> reads; ///< The number of entries of each read.
    CatalogueStatus end = CatalogueStatus::Ok;

    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const SeenEntry& seen : entries)
            result.push_back(seen.name);
        std::sort(result.begin(), result.end());
        return result;
    }

    const SeenEntry& operator[](const std::string& name) const {
        const auto found = std::find_if(entries.begin(), entries.end(),
                                        [&name](const SeenEntry& seen) { return seen.name == name; });
        if (found == entries.end())
            throw std::out_of_range("no entry " + name);
        return *found;
    }
};

/// Reads on in the open folder, to its end.
inline Listing readToEnd(CatalogueIterator& iterator) {
    Listing listing;
    listing.end = CatalogueStatus::Ok;
    while (listing.end == CatalogueStatus::Ok) {
        listing.end = iterator.readBulk();
        const auto entries = iterator.entries();
        listing.reads.push_back(entries.size());
        for (std::size_t i = 0; i < entries.size(); ++i) {
            SeenEntry seen{std::string(entries[i].name), entries[i], {}};
            if (entries[i].isDirectory)
                seen.reference = iterator.reference(i);
            listing.entries.push_back(std::move(seen));
        }
    }
    return listing;
}

/// Opens and reads a folder with an iterator of its own.
inline Listing listFolder(FileCatalogue& catalogue, const CatalogueRef& folder) {
    const auto iterator = catalogue.makeIterator();
    const CatalogueStatus status = iterator->open(folder);
    if (status == CatalogueStatus::Ok)
        return readToEnd(*iterator);
    Listing listing;
    listing.end = status;
    return listing;
}

inline CatalogueRef startFolder(FileCatalogue& catalogue, const std::string& path) {
    CatalogueRef start;
    if (catalogue.referenceFromPath(path, start) != CatalogueStatus::Ok)
        throw std::runtime_error("no start folder " + path);
    return start;
}

inline Listing listPath(FileCatalogue& catalogue, const std::string& path) {
    return listFolder(catalogue, startFolder(catalogue, path));
}

/// What a whole tree came to.
struct TreeTotals {
    std::uint64_t files = 0;
    std::uint64_t folders = 0;
    std::int64_t fileBytes = 0;
    std::uint64_t denied = 0;
    std::uint64_t gone = 0;
};

/// Reads a tree with a stack of pending folders, as a scan does.
inline TreeTotals walkTree(FileCatalogue& catalogue, const CatalogueRef& start) {
    TreeTotals totals;
    const auto iterator = catalogue.makeIterator();
    std::vector<CatalogueRef> pending{start};
    while (!pending.empty()) {
        const CatalogueRef folder = std::move(pending.back());
        pending.pop_back();
        if (iterator->open(folder) != CatalogueStatus::Ok) {
            ++totals.gone;
            continue;
        }
        CatalogueStatus status = CatalogueStatus::Ok;
        while (status == CatalogueStatus::Ok) {
            status = iterator->readBulk();
            const auto entries = iterator->entries();
            for (std::size_t i = 0; i < entries.size(); ++i) {
                (entries[i].isDirectory ? totals.folders : totals.files) += 1;
                if (!entries[i].isDirectory)
                    totals.fileBytes += entries[i].dataPhysicalSize;
                else if (entries[i].valence != 0)
                    pending.push_back(iterator->reference(i));
            }
        }
        totals.denied += status == CatalogueStatus::Denied;
        iterator->close();
    }
    return totals;
}

} // namespace veltrano
