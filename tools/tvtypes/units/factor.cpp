#include "units/factor.h"

#include "text/utf16.h"

#include <fnd/except.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tvtool::units {

namespace {

/// Relative error that the library's computation in double may have.
constexpr double rounding = 1e-14;

std::string dimensionText(const FoundUnit& found) {
    const std::string form = canonicalForm(*found.unit);
    return form.empty() ? "no dimension" : "the canonical form " + form;
}

/// Explains why the canonical forms differ although the fundamental units are the same.
std::string formsExplanation(const UnitPair& pair) {
    if (!pair.conversion) {
        return {};
    }
    for (const FoundUnit* const found : {&pair.from, &pair.to}) {
        if (found->expansion->offsetInProduct != nullptr) {
            return fmt::format("; {} has an offset and is not taken apart",
                               text::toUtf8(found->expansion->offsetInProduct->name));
        }
    }
    return "; a power of 0 and no power are different for the library";
}

/// Returns the reason why the library has no factor.
std::string missingFactorReason(const UnitPair& pair) {
    const FoundUnit& from = pair.from;
    const FoundUnit& to = pair.to;
    if (!from.unit->dimensionallyEquivalentWithUnit(*to.unit)) {
        return fmt::format("{} has {}, {} has {}{}", from.label(), dimensionText(from), to.label(),
                           dimensionText(to), formsExplanation(pair));
    }
    return fmt::format("both have {}, but {} measures {} and {} measures {}", dimensionText(from),
                       from.label(), quantityName(*from.unit), to.label(), quantityName(*to.unit));
}

/// Returns the conversion by fundamental units; empty if they differ or measure different
/// quantities.
std::optional<Conversion> exactConversion(const UnitPair& pair, Values values) {
    const std::optional<Expansion>& from = pair.from.expansion;
    const std::optional<Expansion>& to = pair.to.expansion;
    if (!from || !to || from->powers != to->powers ||
        !pair.from.unit->compatibleWithUnit(*pair.to.unit)) {
        return std::nullopt;
    }
    Conversion conversion = conversionBetween(*from, *to);
    if (values == Values::Differences) {
        conversion.offset = 0;
    }
    return conversion;
}

std::optional<double> libraryFactor(const UnitPair& pair) {
    const exact::Number numbers = pair.from.reading.factor / pair.to.reading.factor;
    try {
        return pair.from.unit->getScalingFactorToConvertTo(*pair.to.unit) *
               exact::toDouble(numbers);
    } catch (const fnd::except::IException&) {
        return std::nullopt;
    }
}

} // namespace

bool LibraryFactor::differs() const { return !(difference <= rounding); }

std::string LibraryFactor::note() const {
    if (isWrong()) {
        return fmt::format("the library's factor is wrong: {}", factor);
    }
    return differs() ? fmt::format("the library's factor is {}, a relative difference of {:.1e}",
                                   factor, difference)
                     : "";
}

LibraryFactor compareFactor(double ofLibrary, const exact::Number& exact) {
    return {ofLibrary,
            std::isfinite(ofLibrary)
                ? exact::toDouble(abs(exact::Number((exact::Number(ofLibrary) - exact) / exact)))
                : std::numeric_limits<double>::infinity()};
}

std::string differenceNote(const Expansion& expansion) {
    return expansion.offsetInProduct == nullptr
               ? ""
               : fmt::format("{} in a product is read as a difference: its offset is left out",
                             text::toUtf8(expansion.offsetInProduct->name));
}

UnitPair relateUnits(const std::string& from, const std::string& to, Values values,
                     TVTypeSys::UnitTable& table) {
    UnitPair pair{findUnit(from, table), findUnit(to, table), {}, {}, {}, {}};
    pair.conversion = exactConversion(pair, values);
    pair.libraryFactor = libraryFactor(pair);
    if (!pair.libraryFactor) {
        pair.reason = missingFactorReason(pair);
    } else if (!pair.conversion) {
        pair.reason = "the exact factor has too many digits";
    }
    const auto addNote = [&pair](const std::string& note) {
        if (!note.empty() && std::ranges::find(pair.notes, note) == pair.notes.end()) {
            pair.notes.push_back(note);
        }
    };
    for (const FoundUnit* const found : {&pair.from, &pair.to}) {
        std::ranges::for_each(found->reading.notes, addNote);
        addNote(found->expansion ? differenceNote(*found->expansion) : "");
    }
    return pair;
}

UnitFactor factorBetween(const std::string& fromText, const std::string& toText, Values values,
                         TVTypeSys::UnitTable& table) {
    UnitPair pair = relateUnits(fromText, toText, values, table);
    UnitFactor result;
    result.from = pair.from.reading.expression;
    result.to = pair.to.reading.expression;
    result.factor = pair.libraryFactor;
    result.notes = std::move(pair.notes);
    result.reason = pair.reason;
    if (!pair.conversion) {
        return result;
    }
    const Conversion& conversion = *pair.conversion;
    if (conversion.offset != 0) {
        result.factor.reset();
        result.conversion = conversion.text();
        result.reason =
            fmt::format("a factor alone does not convert {} into {}; a value x becomes {}",
                        pair.from.label(), pair.to.label(), result.conversion);
        return result;
    }
    result.own = shownNumber(conversion.factor, conversion.piPower, conversion.uncertainty);
    if (result.factor) {
        const LibraryFactor ofLibrary = compareFactor(*result.factor, conversion.factor);
        result.differs = ofLibrary.differs();
        result.isWrong = ofLibrary.isWrong();
        if (result.differs) {
            result.libraryNote = ofLibrary.note();
        }
    }
    return result;
}

} // namespace tvtool::units
