// Output of records and tables.
#include <tvtypes/datatypetable.h>

#include <ostream>
#include <string>

namespace TVTypeSys {

// std::to_string, because the stream's locale and flags must not change the numbers.

void DataType::print(std::ostream& os) const {
    const char* name = getName();
    os << "DataType : '" << (name == nullptr ? "" : name) << "'" << std::endl;
    os << "ID : " << std::to_string(getId()) << std::endl;
    os << "Size : " << std::to_string(getSize()) << std::endl;
    os << "Storage ID : " << std::to_string(getStorageId()) << std::endl;
    os << "DataTypeQualifier : " << std::to_string(getType()) << std::endl;
    os << std::endl;
}

void DataTypeTable::print(std::ostream& os) const {
    os << "DataTypeTable" << std::endl;
    os << "Number of DataTypes : " << std::to_string(getNumDataTypes()) << std::endl;
    os << std::endl;
    for (const std::unique_ptr<DataType>& dataType : dataTypes_) {
        os << *dataType;
    }
    os << std::endl;
}

std::ostream& operator<<(std::ostream& os, const DataType& dataType) {
    dataType.print(os);
    return os;
}

std::ostream& operator<<(std::ostream& os, const DataTypeTable& table) {
    table.print(os);
    return os;
}

} // namespace TVTypeSys
