// Any bytes as a unit: a unit that is found has an expansion that can be printed; an error has a
// position in the text.
#include "text/excerpt.h"
#include "units/found.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    TVTypeSys::UnitTable table;
    try {
        const tvtool::units::FoundUnit found = tvtool::units::findUnit(text, table);
        if (found.expansion) {
            tvtool::units::productText(found.expansion->powers);
            tvtool::exact::fractionText(found.expansion->factor);
        }
    } catch (const tvtool::text::ParseError& error) {
        if (error.position > text.size()) {
            std::abort();
        }
        tvtool::text::excerptAt(text, error.position);
    }
    return 0;
}
