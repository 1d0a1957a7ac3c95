// Conversion and comparison of values, through the functions of their types.
#include "floating_point_environment.h"
#include "registry/builtin_types.h"
#include "services/errors.h"
#include "services/guard.h"

#include <tvtypes/datatypetable.h>

#include <cstring>

namespace TVTypeSys {

namespace {

/// Calls a function of a type. Throws DoesNotExist (name) if it is null, and Failed (name) if its
/// status is 0.
template <class DoesNotExist, class Failed, class Function, class... Arguments>
int call(const DataType& type, Function function, Arguments... arguments) {
    if (function == nullptr) {
        throwError(DoesNotExist(orEmpty(type.getName())));
    }
    const int status = function(arguments...);
    if (status == 0) {
        throwError(Failed(orEmpty(type.getName())));
    }
    return status;
}

/// Returns whether a floating-point array has a part other than zero; NaN is not zero.
template <class Float>
bool anyNonZero(const unsigned char* data, std::size_t parts) {
    const DefaultEnvironment environment;
    for (std::size_t i = 0; i < parts; ++i) {
        Float x;
        std::memcpy(&x, data + i * sizeof x, sizeof x);
        if (!(x == Float{0})) {
            return true;
        }
    }
    return false;
}

/// Returns whether an array has a part whose bytes differ from the ground value.
bool anyDiffersFrom(const void* ground, std::size_t size, const unsigned char* data,
                    std::size_t parts) {
    for (std::size_t i = 0; i < parts; ++i) {
        if (std::memcmp(data + i * size, ground, size) != 0) {
            return true;
        }
    }
    return false;
}

} // namespace

int DataTypeTable::convertToUsingSrcId(int dstId, int srcId, int count, const void* src,
                                       const void* extra, void* dst) const {
    return convert(*record(srcId), dstId, srcId, count, src, extra, dst);
}

int DataTypeTable::convertToUsingDstId(int dstId, int srcId, int count, const void* src,
                                       const void* extra, void* dst) const {
    return convert(*record(dstId), dstId, srcId, count, src, extra, dst);
}

/// Converts with the function of `type`, one of the two types.
int DataTypeTable::convert(const DataType& type, int dstId, int srcId, int count, const void* src,
                           const void* extra, void* dst) const {
    return call<general::DataTypeConvertBetweenFcnDoesNotExist,
                general::DataTypeConvertBetweenFcnUnknownError>(
        type, type.getConvertBetweenFcn(), dataTypeAccess_.get(), nullptr,
        record(dstId)->getIdAliasedThruTo(), record(srcId)->getIdAliasedThruTo(), count, src, extra,
        dst);
}

bool DataTypeTable::convertToUsingSrcIdWithStatus(int dstId, int srcId, int count, const void* src,
                                                  const void* extra, void* dst) const {
    return succeeds([&] { convertToUsingSrcId(dstId, srcId, count, src, extra, dst); });
}

int DataTypeTable::isPositive(int id, int count, const void* values, const void* extra,
                              void* result) const {
    const DataType& type = *record(id);
    return call<general::DataTypeIsPositiveFcnDoesNotExist,
                general::DataTypeIsPositiveFcnUnknownError>(
        type, type.getIsPositiveFcn(), dataTypeAccess_.get(), nullptr, type.getIdAliasedThruTo(),
        count, values, extra, result);
}

bool DataTypeTable::isPositiveWithStatus(int id, int count, const void* values, const void* extra,
                                         void* result) const {
    return succeeds([&] { isPositive(id, count, values, extra, result); });
}

int DataTypeTable::isNegative(int id, int count, const void* values, const void* extra,
                              void* result) const {
    const DataType& type = *record(id);
    return call<general::DataTypeIsNegativeFcnDoesNotExist,
                general::DataTypeIsNegativeFcnUnknownError>(
        type, type.getIsNegativeFcn(), dataTypeAccess_.get(), nullptr, type.getIdAliasedThruTo(),
        count, values, extra, result);
}

int DataTypeTable::greaterThan(int id, int count, const void* lhs, const void* rhs,
                               const void* extra, void* result) const {
    const DataType& type = *record(id);
    return call<general::DataTypeGreaterThanFcnDoesNotExist,
                general::DataTypeGreaterThanFcnUnknownError>(
        type, type.getGreaterThanFcn(), dataTypeAccess_.get(), nullptr, type.getIdAliasedThruTo(),
        count, lhs, rhs, extra, result);
}

int DataTypeTable::greaterEqual(int id, int count, const void* lhs, const void* rhs,
                                const void* extra, void* result) const {
    const DataType& type = *record(id);
    return call<general::DataTypeGreaterEqualFcnDoesNotExist,
                general::DataTypeGreaterEqualFcnUnknownError>(
        type, type.getGreaterEqualFcn(), dataTypeAccess_.get(), nullptr, type.getIdAliasedThruTo(),
        count, lhs, rhs, extra, result);
}

bool DataTypeTable::checkIfNonZeroArray(const void* data, int count, int id, bool isComplex) const {
    if (count < 1) {
        return false;
    }
    const auto* bytes = static_cast<const unsigned char*>(data);
    const std::size_t parts = (isComplex ? 2 : 1) * static_cast<std::size_t>(count);
    if (id == DoubleId) {
        return anyNonZero<double>(bytes, parts);
    }
    if (id == SingleId) {
        return anyNonZero<float>(bytes, parts);
    }
    const DataType& type = *record(id);
    const int size = type.getSize();
    if (size < 1) {
        return false;
    }
    const void* ground = type.getGround();
    if (ground == nullptr) {
        // setSize failed to allocate the ground value.
        throwError(general::MemoryAllocErr());
    }
    return anyDiffersFrom(ground, static_cast<std::size_t>(size), bytes, parts);
}

} // namespace TVTypeSys
