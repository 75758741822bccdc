#include "app/FolderListing.h"

#include "app/DisplayText.h"
#include "app/TypedPath.h"

#include <QCollator>
#include <QLocale>

#include <algorithm>
#include <utility>

namespace veltrano {

namespace {

/// The order of names in the user's language. The plain locale knows no order but that of the bytes.
QCollator nameOrder() {
    const QLocale locale = QLocale().collation();
    QCollator order(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    order.setCaseSensitivity(Qt::CaseInsensitive);
    order.setNumericMode(true);
    return order;
}

void sortByName(std::vector<Subfolder>& folders) {
    const QCollator order = nameOrder();
    std::vector<std::pair<QCollatorSortKey, Subfolder>> keyed;
    keyed.reserve(folders.size());
    for (Subfolder& folder : folders) {
        QCollatorSortKey key = order.sortKey(folder.text);
        keyed.emplace_back(std::move(key), std::move(folder));
    }
    std::sort(keyed.begin(), keyed.end(), [](const auto& left, const auto& right) {
        const int compared = left.first.compare(right.first);
        return compared != 0 ? compared < 0 : left.second.name < right.second.name;
    });
    std::transform(keyed.begin(), keyed.end(), folders.begin(),
                   [](auto& each) { return std::move(each.second); });
}

Subfolder subfolder(std::string_view name) {
    return {std::string(name), displayText(name)};
}

/// Reads to the end: the folders into the listing, the names of the links apart.
void readEntries(FileCatalogue& catalogue, const std::string& path, const std::function<bool()>& isAbandoned,
                 FolderListing& listing, std::vector<std::string>& links) {
    CatalogueRef folder;
    const auto iterator = catalogue.makeIterator();
    listing.status = catalogue.referenceFromPath(path, folder);
    if (listing.status == CatalogueStatus::Ok)
        listing.status = iterator->open(folder);
    while (listing.status == CatalogueStatus::Ok && !isAbandoned()) {
        listing.status = iterator->readBulk();
        for (const CatalogueEntry& entry : iterator->entries()) {
            if (entry.isDirectory)
                listing.folders.push_back(subfolder(entry.name));
            else if (entry.isSymbolicLink)
                links.emplace_back(entry.name);
        }
    }
}

} // namespace

void listSubfolders(FileCatalogue& catalogue, const std::string& path,
                    const std::function<bool()>& isAbandoned,
                    const std::function<void(FolderListing listing)>& found) {
    FolderListing listing;
    std::vector<std::string> links;
    readEntries(catalogue, path, isAbandoned, listing, links);
    if (isAbandoned())
        return;
    sortByName(listing.folders);
    listing.isComplete = links.empty();
    found(listing);
    if (links.empty())
        return;

    for (const std::string& link : links) {
        if (isAbandoned())
            return;
        if (isFolderAtPath(catalogue, pathOfChild(path, link)))
            listing.folders.push_back(subfolder(link));
    }
    sortByName(listing.folders);
    listing.isComplete = true;
    found(std::move(listing));
}

bool isFolderAtPath(FileCatalogue& catalogue, std::string_view path) {
    CatalogueRef folder;
    return catalogue.referenceFromPath(path, folder) == CatalogueStatus::Ok;
}

} // namespace veltrano
