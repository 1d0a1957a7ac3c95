#include <tvtypes/structdatatype.h>

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
    elements_.clear();
    for (int i = 0; i < count; ++i) {
        ownedElements_.push_back(std::make_unique<StructElement>());
        elements_.push_back(ownedElements_.back().get());
    }
}

const std::vector<StructElement*>& StructDataType::getElements() const { return elements_; }

int StructDataType::getNumFlatElements() const { return numFlatElements_; }
void StructDataType::setNumFlatElements(int count) { numFlatElements_ = count; }
int StructDataType::getNumRawElements() const { return numRawElements_; }
void StructDataType::setNumRawElements(int count) { numRawElements_ = count; }
int StructDataType::getNumDFSElements() const { return numDFSElements_; }
void StructDataType::setNumDFSElements(int count) { numDFSElements_ = count; }

const tvChecksumValue& StructDataType::getDtChecksumValue() const { return checksum_; }

void StructDataType::setDtChecksumValue(const tvChecksumValue& value) { checksum_ = value; }

bool StructDataType::isBusType() const { return false; }
