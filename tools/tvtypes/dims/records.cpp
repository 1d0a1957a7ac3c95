#include "dims/records.h"

namespace tvtool::dims {

const char* nameOf(DimsAnswer::Known known) {
    switch (known) {
    case DimsAnswer::Known::Yes:
        return "yes";
    case DimsAnswer::Known::No:
        return "no";
    case DimsAnswer::Known::Nothing:
        break;
    }
    return "not known";
}

} // namespace tvtool::dims
