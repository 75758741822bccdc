#include "tree/TopLevelItem.h"

#include "tree/PathComponents.h"

#include <limits>
#include <typeinfo>
#include <utility>

namespace veltrano {

namespace {

/// The catalogue's clock starts with the year 1904. Its high seconds are not read.
EntryDate entryDate(const CatalogueDate& date) {
    if (date == CatalogueDate{})
        return std::nullopt;
    return std::chrono::sys_seconds(
        std::chrono::seconds(std::int64_t{date.lowSeconds} - kCatalogueEpochOffset));
}

/// The product cut off to a whole number, within the range of one.
std::int64_t truncatedProduct(std::int64_t size, double factor) {
    constexpr double kBeyondRange = 9223372036854775808.0; // 2^63
    const double product = static_cast<double>(size) * factor;
    if (product >= kBeyondRange)
        return std::numeric_limits<std::int64_t>::max();
    if (product < -kBeyondRange)
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(product);
}

/// Sizes of a volume in use drift all the time; a part in ten thousand shows nowhere.
bool isAboutTheSame(std::int64_t size, std::int64_t other) {
    return size >= truncatedProduct(other, 0.9999) && size <= truncatedProduct(other, 1.0001);
}

} // namespace

TopLevelItem::TopLevelItem(std::string initWithPath, std::string name, std::int64_t size,
                           std::int64_t nfreesize_, std::int64_t nodes)
    : pname(std::move(name)),
      ppath(std::move(initWithPath)),
      nsize(size),
      nfreesize(nfreesize_),
      nnodes(nodes) {}

void TopLevelItem::initDates(const PathFacts& facts) {
    pcreatedDate = entryDate(facts.created);
    pmodDate = entryDate(facts.modified);
    paccDate = entryDate(facts.accessed);
    mnValence = facts.valence;
}

bool TopLevelItem::isEqual(const TopLevelItem* other) const {
    if (!other || typeid(*this) != typeid(*other))
        return false;
    return isAboutTheSame(nsize, other->nsize) && isAboutTheSame(nfreesize, other->nfreesize) &&
           nnodes == other->nnodes && pname == other->pname && ppath == other->ppath &&
           pcreatedDate == other->pcreatedDate && paccDate == other->paccDate && pmodDate == other->pmodDate;
}

void TopLevelItem::setPropsFrom(const TopLevelItem& other) {
    nsize = other.nsize;
    nfreesize = other.nfreesize;
    nnodes = other.nnodes;
    pname = other.pname;
    ppath = other.ppath;
    mnValence = other.mnValence;
    pcreatedDate = other.pcreatedDate;
    pmodDate = other.pmodDate;
    paccDate = other.paccDate;
}

std::string TopLevelItem::getDisplayName() const {
    return pname.empty() ? std::string(lastPathComponent(ppath)) : pname;
}

double TopLevelItem::getFullRatio() const {
    if (nsize < 1)
        return 1.0;
    return static_cast<double>(getOccSize()) / static_cast<double>(nsize);
}

std::int64_t TopLevelItem::getTheSize() const {
    return getUseFreeSector() ? nsize : gettotalsize();
}

FileSystemItem* TopLevelItem::getItemByFilePath(std::string_view path) {
    return scannedRoot ? scannedRoot->getItemByFilePath(path) : nullptr;
}

void TopLevelItem::updateAddedItemsToCollection(std::span<const std::string> paths) {
    if (scannedRoot)
        scannedRoot->updateAddedItemsToCollection(paths);
}

void TopLevelItem::updateRemovedItemsInCollection(std::span<const std::string> paths) {
    if (scannedRoot)
        scannedRoot->updateRemovedItemsInCollection(paths);
}

} // namespace veltrano
