#include "model/findings.h"

namespace tvtool::model {

const char* nameOf(Kind kind) {
    switch (kind) {
    case Kind::BuiltIn:
        return "built-in";
    case Kind::Alias:
        return "alias";
    case Kind::Enumerated:
        return "enumerated";
    case Kind::FixedPoint:
        return "fixed-point";
    case Kind::Struct:
        return "struct";
    }
    return "";
}

const char* nameOf(UnitSource source) {
    switch (source) {
    case UnitSource::Name:
        return "name";
    case UnitSource::Reading:
        return "reading";
    case UnitSource::BaseUnits:
        return "base units";
    case UnitSource::Nothing:
        return "";
    }
    return "";
}

} // namespace tvtool::model
