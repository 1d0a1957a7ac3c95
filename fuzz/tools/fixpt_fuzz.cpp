// Any bytes as the name of a numeric type, and as a value to store in it: a name that is read is
// one that the library writes for the same record, and what is no name has a place.
#include "fixedpoint/details.h"
#include "fixedpoint/identifier.h"
#include "fixedpoint/quantization.h"
#include "text/excerpt.h"
#include "text/parse_error.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace tvtool;

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void readAndShow(const std::string& name, const std::string& value) {
    const fxpDataTypeProp record = fixedpoint::parseTypeName(name);
    check(record.validateFxpDTProp());
    const std::string written = fxpDataTypeToIdentifierString_NoCache(&record);
    check(fxdt_isequal_to()(fixedpoint::parseTypeName(written), record));
    TVTypeSys::DataTypeTable table;
    fixedpoint::typeDetails(name, record, table);
    fixedpoint::quantize({value}, record, FXP_OVERFLOW_WRAP);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::size_t blank = text.find(' ');
    const std::string name = text.substr(0, blank);
    try {
        readAndShow(name, blank == std::string::npos ? "" : text.substr(blank + 1));
    } catch (const text::ParseError& error) {
        check(error.position <= name.size());
        text::excerptAt(name, error.position);
    } catch (const std::invalid_argument&) {
    }
    return 0;
}
