#include "units/unit_names.h"

#include "text/utf16.h"
#include "units/words.h"

#include <tvtypes/units.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>
#include <utility>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;
using TVTypeSys::UnitDatabase;

/// No name is as long, in bytes.
constexpr std::size_t longestName = 80;

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 128; });
}

/// All names, some of them several times. The database is read once, and so are they.
struct Names {
    std::vector<std::string> ascii;
    std::vector<std::pair<std::string, std::string>> others; ///< with the text without case

    static const Names& get() {
        static const Names& names = *[] {
            auto created = std::make_unique<Names>();
            forEachUnitWord([&](std::string word) {
                if (isAscii(word)) {
                    created->ascii.push_back(std::move(word));
                } else {
                    std::string folded = text::foldCase(word);
                    created->others.emplace_back(std::move(word), std::move(folded));
                }
            });
            return created.release();
        }();
        return names;
    }
};

const UnitBase* findUnitBase(std::string_view text) {
    const UnitBase::ReferenceSet units =
        UnitDatabase::getUnitDatabase()->getUnit(text::toUtf16(text));
    return units.empty() ? nullptr : &units.begin()->get();
}

} // namespace

std::string findUnitName(std::string_view text) {
    const UnitBase* const unit = findUnitBase(text);
    if (unit == nullptr) {
        return {};
    }
    if (UnitBase::isValidUnitExpr(text::toUtf16(text))) {
        return std::string(text);
    }
    for (const std::u16string* const name : {&unit->symbol, &unit->name}) {
        if (findUnitBase(text::toUtf8(*name)) == unit && UnitBase::isValidUnitExpr(*name)) {
            return text::toUtf8(*name);
        }
    }
    return {};
}

std::string quantityOfUnit(std::string_view name) {
    const auto* const unit = dynamic_cast<const TVTypeSys::Unit*>(findUnitBase(name));
    return unit == nullptr ? "" : text::toUtf8(unit->abstractUnit.get().name);
}

std::string fullNameOfUnit(std::string_view name) {
    const UnitBase* const unit = findUnitBase(name);
    return unit == nullptr ? "" : text::toUtf8(unit->name);
}

std::vector<std::string> caseVariants(std::string_view text) {
    if (text.size() > longestName) {
        return {};
    }
    // A search, since an index of all names takes longer than the few searches of a call.
    const std::string folded = text::foldCase(text);
    const auto isLetterInCase = [](char letter, char foldedLetter) {
        return letter == foldedLetter ||
               (letter >= 'A' && letter <= 'Z' && letter - 'A' + 'a' == foldedLetter);
    };
    const auto folds = [&](const std::string& name) {
        return std::ranges::equal(name, folded, isLetterInCase);
    };
    std::set<std::string> variants;
    std::ranges::copy_if(Names::get().ascii, std::inserter(variants, variants.end()), folds);
    for (const auto& [name, foldedName] : Names::get().others) {
        if (foldedName == folded) {
            variants.insert(name);
        }
    }
    return {variants.begin(), variants.end()};
}

} // namespace tvtool::units
