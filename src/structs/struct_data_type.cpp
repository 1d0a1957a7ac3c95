#include "structs/element_cache.h"
#include "structs/element_properties.h"

#include <tvtypes/structs/struct_data_type.h>

#include <atomic>
#include <iterator>
#include <utility>

namespace {

/// Returns a number that it has not returned before.
std::uint64_t nextVersion() {
    static constinit std::atomic<std::uint64_t> last{0};
    return ++last;
}

} // namespace

StructDataType::StructDataType(int id, const std::string& name, DataTypeSource source)
    : DataType(id, name, source), layoutVersion_(nextVersion()) {
    DataType::setType(TVTypeSys::DataTypeQualifierStruct);
}

StructDataType::~StructDataType() {
    if (elementCache_ != nullptr) {
        TVTypeSys::ElementCache::retire(std::move(elementCache_), std::move(ownedElements_));
    }
}

std::vector<int> StructDataType::dependsOn() const {
    std::vector<int> ids;
    ids.reserve(elements_.size());
    for (const StructElement* element : elements_) {
        ids.push_back(element->dataTypeId);
    }
    return ids;
}

int StructDataType::getNumElements() const { return static_cast<int>(elements_.size()); }

void StructDataType::setNumElements(int count) {
    std::vector<std::unique_ptr<StructElement>> owned;
    std::vector<StructElement*> elements;
    for (int i = 0; i < count; ++i) {
        owned.push_back(std::make_unique<StructElement>());
        elements.push_back(owned.back().get());
    }
    ownedElements_.insert(ownedElements_.end(), std::make_move_iterator(owned.begin()),
                          std::make_move_iterator(owned.end()));
    elements_ = std::move(elements);
    layoutVersion_ = nextVersion();
}

const std::vector<StructElement*>& StructDataType::getElements() const { return elements_; }

int StructDataType::getNumFlatElements() const { return numFlatElements_; }
void StructDataType::setNumFlatElements(int count) {
    layoutVersion_ = nextVersion();
    numFlatElements_ = count;
}

int StructDataType::getNumRawElements() const { return numRawElements_; }
void StructDataType::setNumRawElements(int count) {
    layoutVersion_ = nextVersion();
    numRawElements_ = count;
}

int StructDataType::getNumDFSElements() const { return numDFSElements_; }
void StructDataType::setNumDFSElements(int count) {
    layoutVersion_ = nextVersion();
    numDFSElements_ = count;
}

int StructDataType::getDFSIdxFromFlatIdx(int flatIdx) const {
    const std::size_t tableSize = dfsIdxFromFlatIdx_.size();
    if (flatIdx >= 0 && static_cast<std::size_t>(flatIdx) < tableSize) {
        return dfsIdxFromFlatIdx_[static_cast<std::size_t>(flatIdx)];
    }
    if (flatIdx < 0 || numFlatElements_ < 1 ||
        static_cast<std::size_t>(flatIdx % numFlatElements_) >= tableSize) {
        TVTypeSys::throwInvalidIndex(*this, flatIdx);
    }
    const long long nodesBefore =
        static_cast<long long>(flatIdx / numFlatElements_) * numDFSElements_;
    return TVTypeSys::truncateToInt(
        nodesBefore + dfsIdxFromFlatIdx_[static_cast<std::size_t>(flatIdx % numFlatElements_)]);
}

void StructDataType::setDFSIdxFromFlatIdx(const std::vector<int>& table) {
    dfsIdxFromFlatIdx_ = table;
}

const tvChecksumValue& StructDataType::getDtChecksumValue() const { return checksum_; }

void StructDataType::setDtChecksumValue(const tvChecksumValue& value) { checksum_ = value; }

bool StructDataType::isBusType() const { return false; }

DFSElementCache* StructDataType::getCachedElement(int dfsIdx) {
    return &TVTypeSys::ElementCache::of(*this)[dfsIdx];
}
