// Any bytes as a unit: what is read can be entered and computed, what is not has a place.
#include "report/excerpt.h"
#include "unit/found.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    TVTypeSys::UnitTable table;
    try {
        const tvtool::unit::FoundUnit found = tvtool::unit::findUnit(text, table);
        if (found.meaning) {
            tvtool::unit::productText(found.meaning->powers);
            tvtool::exactText(found.meaning->factor);
        }
    } catch (const tvtool::unit::UnitError& error) {
        if (error.position > text.size()) {
            std::abort();
        }
        tvtool::report::excerptAt(text, error.position);
    }
    return 0;
}
