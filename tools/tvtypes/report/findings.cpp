#include "report/findings.h"

namespace tvtool::report {

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

} // namespace tvtool::report
