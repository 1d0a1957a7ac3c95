// Any bytes as a unit: what is read can be entered and computed, what is not has a place.
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
        if (found.meaning) {
            tvtool::units::productText(found.meaning->powers);
            tvtool::exactText(found.meaning->factor);
        }
    } catch (const text::ParseError& error) {
        if (error.position > text.size()) {
            std::abort();
        }
        tvtool::text::excerptAt(text, error.position);
    }
    return 0;
}
