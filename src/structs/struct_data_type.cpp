#include "structs/element_properties.h"
#include "structs/view_cache.h"

#include <tvtypes/structs/struct_data_type.h>

StructDataType::StructDataType(int id, const std::string& name, DataTypeSource source)
    : DataType(id, name, source) {
    DataType::setType(TVTypeSys::DataTypeQualifierStruct);
}

StructDataType::~StructDataType() = default;

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
    forgetPositions();
    elements_.clear();
    for (int i = 0; i < count; ++i) {
        ownedElements_.push_back(std::make_unique<StructElement>());
        elements_.push_back(ownedElements_.back().get());
    }
}

const std::vector<StructElement*>& StructDataType::getElements() const { return elements_; }

int StructDataType::getNumFlatElements() const { return numFlatElements_; }
void StructDataType::setNumFlatElements(int count) {
    forgetPositions();
    numFlatElements_ = count;
}

int StructDataType::getNumRawElements() const { return numRawElements_; }
void StructDataType::setNumRawElements(int count) {
    forgetPositions();
    numRawElements_ = count;
}

int StructDataType::getNumDFSElements() const { return numDFSElements_; }
void StructDataType::setNumDFSElements(int count) {
    forgetPositions();
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
    return &TVTypeSys::ViewCache::get(*this).nodes[dfsIdx];
}

/// Clears the cached positions, which depend on the elements and counts.
void StructDataType::forgetPositions() {
    if (viewCache_ != nullptr) {
        viewCache_->clearPositions();
    }
}
