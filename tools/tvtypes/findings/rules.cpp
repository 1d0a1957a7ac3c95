#include "findings/rules.h"

#include <cstddef>
#include <iterator>

namespace tvtool::findings {

namespace {

constexpr Severity error = Severity::Error;
constexpr Severity warning = Severity::Warning;
constexpr Severity note = Severity::Note;

constexpr Rule table[] = {
    {Code::ArchiveDescriptions, "archive-descriptions", warning, Area::File,
     "The archive has more than one model description; the first one at its root is read.",
     "Remove the other descriptions, as tools differ in which of them they read.",
     "descriptions are not read"},
    {Code::ArchiveEntry, "archive-entry", note, Area::File,
     "An entry of the archive that is named as a model description is ignored.",
     "Remove the entry, which an archiving program has added.", "entries are ignored"},
    {Code::ArchiveFolder, "archive-folder", error, Area::File,
     "The model description is in a folder of the archive.",
     "Put modelDescription.xml at the root of the archive.",
     "descriptions are not at the root of the archive"},
    {Code::AttributeMissing, "attribute-missing", error, Area::File,
     "An element lacks an attribute that the standard requires.", "Add the attribute.",
     "required attributes are missing"},
    {Code::AttributeUnexpected, "attribute-unexpected", warning, Area::File,
     "The standard defines no such attribute of this element in this version of FMI.",
     "Correct the name of the attribute, or remove it: it has no effect.",
     "attributes are not expected and are ignored"},
    {Code::ElementRepeated, "element-repeated", error, Area::File,
     "An element that may occur once occurs again; the first one is read.",
     "Remove all but one of the elements.", "elements occur again"},
    {Code::ElementUnexpected, "element-unexpected", error, Area::File,
     "The standard defines no such element at this place; it is skipped with all it contains.",
     "Correct the name or the place of the element, or remove it.",
     "elements are not expected and are skipped"},
    {Code::NameEmpty, "name-empty", error, Area::File,
     "The name of a variable, type, item or display unit is empty.", "Give a name.",
     "names are empty"},
    {Code::ValueInvalid, "value-invalid", error, Area::File,
     "The value of an attribute is not of the attribute's type, or out of its range.",
     "Write a value of the type; FMI has a decimal point, and true and false in lower case.",
     "values are invalid"},

    {Code::NameRepeated, "name-repeated", error, Area::Variable,
     "Two variables or aliases have the same name.", "Rename one of them.",
     "names are those of other variables too"},
    {Code::StartCount, "start-count", error, Area::Variable,
     "The number of start values is not the number of elements of the variable.",
     "Give one start value for each element, or correct the dimensions.",
     "variables have a wrong number of start values"},
    {Code::ValueReferenceRepeated, "value-reference-repeated", error, Area::Variable,
     "Two variables of FMI 3 have the same value reference.",
     "Give each variable a value reference of its own, and declare further names by Alias.",
     "value references are those of other variables too"},

    {Code::BaseTypeMissing, "base-type-missing", error, Area::Type,
     "A ScalarVariable or SimpleType of FMI 2 has no element with its type.",
     "Add a Real, Integer, Boolean, String or Enumeration element.", "elements have no type"},
    {Code::BaseTypeRepeated, "base-type-repeated", error, Area::Type,
     "A ScalarVariable or SimpleType of FMI 2 has two elements with a type; the first one counts.",
     "Remove all but one of the elements.", "elements have a second type"},
    {Code::DeclaredTypeMismatch, "declared-type-mismatch", error, Area::Type,
     "A variable declares a type of another base type.",
     "Declare a type of the variable's base type.",
     "variables declare a type of another base type"},
    {Code::DeclaredTypeMissing, "declared-type-missing", error, Area::Type,
     "An enumeration variable declares no type, so its items are unknown.",
     "Add declaredType with the name of an enumeration.", "enumeration variables have no type"},
    {Code::DeclaredTypeUndefined, "declared-type-undefined", error, Area::Type,
     "A variable declares a type that the description does not define.",
     "Define the type, or correct the name.", "variables declare a type that is not defined"},
    {Code::EnumerationEmpty, "enumeration-empty", error, Area::Type, "An enumeration has no items.",
     "Add the items.", "enumerations have no items"},
    {Code::ItemRepeated, "item-repeated", error, Area::Type,
     "Two items of an enumeration have the same name.", "Rename one of them.",
     "items have the name of another one"},
    {Code::ItemValueMissing, "item-value-missing", error, Area::Type,
     "An item of an enumeration has no value; such items are numbered from 1.", "Add the value.",
     "items have no value"},
    {Code::ItemValueRepeated, "item-value-repeated", error, Area::Type,
     "Two items of an enumeration have the same value.", "Change one of the values.",
     "items have the value of another one"},
    {Code::TypeRejected, "type-rejected", warning, Area::Type,
     "The table of types cannot represent a type.", "Change the type as the sentence says.",
     "types have no place in the table"},
    {Code::TypeRepeated, "type-repeated", error, Area::Type,
     "Two types have the same name; the first one counts.", "Rename or remove one of them.",
     "types are defined again"},

    {Code::DisplayUnitAlone, "display-unit-alone", error, Area::Unit,
     "A variable has a display unit, but neither it nor its type has a unit.",
     "Add the unit, or remove the display unit.", "display units have no unit"},
    {Code::DisplayUnitRepeated, "display-unit-repeated", error, Area::Unit,
     "Two display units of a unit have the same name; the first one counts.", "Remove one of them.",
     "display units are defined again"},
    {Code::DisplayUnitUndefined, "display-unit-undefined", error, Area::Unit,
     "A display unit is used that its unit does not define.",
     "Define it below the unit, or correct the name.", "display units are not defined"},
    {Code::UnitAmbiguous, "unit-ambiguous", note, Area::Unit,
     "The name of a unit has several meanings, and its numbers decide for an unusual one.",
     "Choose an unambiguous name if you can.", "names of units are ambiguous"},
    {Code::UnitDimension, "unit-dimension", error, Area::Unit,
     "The base units of a unit are not those of the unit that its name denotes.",
     "Correct the powers of the base units, or the name.",
     "units do not measure what their names denote"},
    {Code::UnitFactor, "unit-factor", error, Area::Unit,
     "The factor of a unit is not that of the unit that its name denotes.",
     "Correct the factor, or the name.", "units have a wrong factor"},
    {Code::UnitFactorInexact, "unit-factor-inexact", note, Area::Unit,
     "The factor of a unit in the unit table differs from the exact one.",
     "Compute with the exact factor where the difference matters.",
     "units have an inexact factor in the table"},
    {Code::UnitFactorInverse, "unit-factor-inverse", error, Area::Unit,
     "The factor of a display unit is the inverse of the right one.",
     "Write the factor by which a value in the unit is multiplied to give that in the display "
     "unit.",
     "display units have the inverse of their factor"},
    {Code::UnitFactorZero, "unit-factor-zero", error, Area::Unit, "The factor of a unit is 0.",
     "Write the factor of the unit.", "factors are 0"},
    {Code::UnitOffset, "unit-offset", error, Area::Unit,
     "The offset of a unit is not that of the unit that its name denotes.",
     "Correct the offset, or the name.", "units have a wrong offset"},
    {Code::UnitOutside, "unit-outside", note, Area::Unit,
     "The unit table cannot represent a unit, for instance since it has an offset.",
     "Nothing has to be done; variables of the unit have none in the table.",
     "units have no place in the table"},
    {Code::UnitReading, "unit-reading", note, Area::Unit,
     "The name of a unit is not in the syntax of the unit table, and was interpreted.",
     "Add a BaseUnit, which says what the unit means.", "names of units are interpreted"},
    {Code::UnitRepeated, "unit-repeated", error, Area::Unit,
     "Two units have the same name; the first one counts.", "Remove one of them.",
     "units are defined again"},
    {Code::UnitTableMissing, "unit-table-missing", note, Area::Unit,
     "The data of the unit table cannot be read, so no unit is checked.",
     "Install the data files of the library.", "unit tables are missing"},
    {Code::UnitUndefined, "unit-undefined", error, Area::Unit,
     "A unit is used that the description does not define.",
     "Define the unit, or correct its name.", "units are not defined"},
    {Code::UnitUnknown, "unit-unknown", note, Area::Unit,
     "The name of a unit is unknown, so its numbers are not checked.",
     "Correct the name if it is misspelt.", "names of units are unknown"},

    {Code::DimensionInvalid, "dimension-invalid", error, Area::Dimension,
     "A Dimension has neither start nor valueReference, or both.",
     "Give the size by start, or by the value reference of a structural parameter.",
     "dimensions have no size, or two"},
    {Code::DimensionParameter, "dimension-parameter", error, Area::Dimension,
     "A Dimension refers to a variable that is no structural parameter or constant of type UInt64.",
     "Refer to a structural parameter or a constant of type UInt64.",
     "dimensions refer to a variable that is no size"},
    {Code::DimensionUndefined, "dimension-undefined", error, Area::Dimension,
     "A Dimension refers to a value reference that no variable has.",
     "Correct the value reference.", "dimensions refer to no variable"},
    {Code::SizeContradiction, "size-contradiction", error, Area::Dimension,
     "The sizes that start values and dimensions imply contradict each other.",
     "Correct the start values or the dimensions.", "sizes contradict others"},
    {Code::SizeLimit, "size-limit", note, Area::Dimension,
     "There are more facts about sizes than are compared.", "Nothing has to be done.",
     "facts are not compared"},

    {Code::NamePrefix, "name-prefix", note, Area::Struct,
     "A name is both that of a variable and a prefix of other names; the variable is no element of "
     "a struct.",
     "Nothing has to be done; rename the variable if it should be in a struct.",
     "names are both a variable and a struct"},
    {Code::NameSyntax, "name-syntax", error, Area::Struct,
     "A name does not follow the syntax of structured names, which the description declares.",
     "Correct the name, or declare the naming convention flat.", "names are not structured"},
    {Code::StructElementSize, "struct-element-size", note, Area::Struct,
     "An array without a known size of at least 1 is no element of a struct.",
     "Give the array a size to see it in a struct.", "arrays are no elements of a struct"},
    {Code::StructLimit, "struct-limit", warning, Area::Struct,
     "Names are too long, or structs too many, to be read.",
     "Shorten the names, or split the model.", "names or structs are too long or too many"},
    {Code::StructRejected, "struct-rejected", warning, Area::Struct,
     "A struct cannot be laid out in memory.", "Make the struct smaller.",
     "structs cannot be laid out"},

    {Code::ConversionMissing, "conversion-missing", error, Area::Call,
     "No factor converts the first unit to the second, or the library has none.",
     "Check that both units measure the same quantity.", "units do not convert"},
    {Code::DimensionForm, "dimension-form", note, Area::Call,
     "A dimension, or a part of it, is not simplified.", "Nothing has to be done.",
     "dimensions are not simplified"},
    {Code::FactContradiction, "fact-contradiction", error, Area::Call,
     "A fact contradicts the facts that the sentence lists.",
     "Correct or remove one of these facts.", "facts contradict others"},
    {Code::FactInvalid, "fact-invalid", error, Area::Call,
     "A line of a file of facts cannot be parsed, and is skipped.", "Correct the line.",
     "lines cannot be parsed"},
    {Code::FactRemark, "fact-remark", note, Area::Call,
     "A line of a file of facts has no effect, or a size in it is not simplified.",
     "Nothing has to be done.", "lines have remarks"},
    {Code::LibraryFactor, "library-factor", warning, Area::Call,
     "The factor that the library computes differs from the exact one.",
     "Compute with the exact factor where the difference matters.",
     "factors of the library differ from the exact ones"},
    {Code::NameReading, "name-reading", note, Area::Call,
     "A unit is not in the syntax of the library and was interpreted, or is easily mistaken.",
     "Write the expression that is shown, which has one meaning.", "units are interpreted"},
    {Code::TypeRemark, "type-remark", note, Area::Call,
     "A numeric type differs from what its name or its options suggest.", "Nothing has to be done.",
     "types have remarks"},
    {Code::ValuesLost, "values-lost", warning, Area::Call,
     "Values are not the same after the conversion.",
     "Choose a type that holds the values, if they have to be kept.", "conversions change values"},
};

/// Checks that a code is the index of its rule.
constexpr bool isOrdered() {
    for (std::size_t i = 0; i < std::size(table); ++i) {
        if (table[i].code != static_cast<Code>(i)) {
            return false;
        }
    }
    return true;
}
static_assert(isOrdered());

} // namespace

std::span<const Rule> rules() { return table; }

const Rule& ruleOf(Code code) { return table[static_cast<std::size_t>(code)]; }

const char* severityName(Severity severity) {
    constexpr const char* names[] = {"error", "warning", "note"};
    return names[static_cast<std::size_t>(severity)];
}

} // namespace tvtool::findings
