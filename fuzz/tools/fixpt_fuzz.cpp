// Any bytes as the name of a numeric type, and as a value to store in it: a name that is read is
// one that the library writes for the same record, and what is no name has a place.
#include "fixpt/error.h"
#include "fixpt/identifier.h"
#include "fixpt/quantization.h"
#include "fixpt/sheet.h"
#include "report/excerpt.h"

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
    const fxpDataTypeProp record = fixpt::recordNamed(name);
    check(record.validateFxpDTProp());
    const std::string written = fxpDataTypeToIdentifierString_NoCache(&record);
    check(fxdt_isequal_to()(fixpt::recordNamed(written), record));
    TVTypeSys::DataTypeTable table;
    fixpt::sheetOf(name, record, table);
    fixpt::quantized({value}, record, FXP_OVERFLOW_WRAP);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::size_t blank = text.find(' ');
    const std::string name = text.substr(0, blank);
    try {
        readAndShow(name, blank == std::string::npos ? "" : text.substr(blank + 1));
    } catch (const fixpt::NameError& error) {
        check(error.position <= name.size());
        report::excerptAt(name, error.position);
    } catch (const fixpt::Error&) {
    }
    return 0;
}
