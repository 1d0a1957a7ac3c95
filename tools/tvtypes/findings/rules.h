/// \file
/// The table of the rules that findings refer to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace tvtool::findings {

enum class Severity : std::uint8_t {
    Error,   ///< contradicts the standard of FMI, or itself
    Warning, ///< allowed, but probably a mistake, or rejected by many tools
    Note     ///< odd, but with a clear meaning
};

/// The sections of docs/findings.md. The command layout counts those of Struct alone; those of Call
/// are about the arguments of the commands other than inspect, layout and check.
enum class Area : std::uint8_t {
    File,
    Variable,
    Type,
    Unit,
    Dimension,
    Struct,
    Package,
    Connection,
    Parameter,
    Call
};

/// The rules, in the order of the table: by area, then by name.
enum class Code : std::uint8_t {
    ArchiveDescriptions,
    ArchiveEntry,
    ArchiveFolder,
    AttributeMissing,
    AttributeUnexpected,
    ElementForeign,
    ElementMissing,
    ElementOrder,
    ElementRepeated,
    ElementUnexpected,
    ElementVersion,
    NameEmpty,
    ValueInvalid,

    CausalityVariability,
    ClockType,
    DependenciesKind,
    DerivativeType,
    IndependentRepeated,
    IndependentType,
    InitialForbidden,
    MinAboveMax,
    NameRepeated,
    NominalRange,
    NominalSign,
    OutputUnlisted,
    ReferenceSelf,
    ReferenceUndefined,
    StartCount,
    StartForbidden,
    StartItem,
    StartMissing,
    StartRange,
    StructureKind,
    StructureRepeated,
    ValueReferenceRepeated,
    VariabilityMissing,
    VariabilityType,

    BaseTypeMissing,
    BaseTypeRepeated,
    DeclaredTypeMismatch,
    DeclaredTypeMissing,
    DeclaredTypeUndefined,
    EnumerationEmpty,
    ItemRepeated,
    ItemValueMissing,
    ItemValueRange,
    ItemValueRepeated,
    TypeNamedAsVariable,
    TypeRejected,
    TypeRepeated,

    DisplayUnitAlone,
    DisplayUnitIgnored,
    DisplayUnitRepeated,
    DisplayUnitUndefined,
    UnitAmbiguous,
    UnitDimension,
    UnitFactor,
    UnitFactorInexact,
    UnitFactorInverse,
    UnitFactorZero,
    UnitOffset,
    UnitOutside,
    UnitReading,
    UnitRepeated,
    UnitTableMissing,
    UnitUndefined,
    UnitUnknown,
    UnitsMissing,

    DimensionInvalid,
    DimensionParameter,
    DimensionUndefined,
    DimensionZero,
    SizeContradiction,
    SizeLimit,
    StructuralDimension,

    NamePrefix,
    NameSyntax,
    StructElementSize,
    StructLimit,
    StructRejected,

    ComponentFindings,
    ComponentSkipped,
    ComponentUnreadable,
    ConnectorRepeated,
    DictionaryEntry,
    DictionaryUndefined,
    ElementNameRepeated,
    EnumerationRepeated,
    EnumerationUndefined,
    ImplementationMissing,
    NamespaceMissing,
    NamespaceUndeclared,
    NamespaceUnknown,
    SourceAbsolute,
    SourceEmpty,
    SourceMissing,
    SourceOutside,
    SourceParent,
    SystemCycle,
    VersionFeature,
    VersionUnknown,

    BinaryType,
    ClockInterval,
    ConnectionConnector,
    ConnectionElement,
    ConnectionForbidden,
    ConnectionSelf,
    ConnectorAmbiguous,
    ConnectorDimension,
    ConnectorKind,
    ConnectorType,
    ConnectorUnit,
    ConnectorUnmatched,
    ConnectorUnused,
    DimensionAttributes,
    DimensionContradiction,
    DimensionIndex,
    DimensionRank,
    DimensionSize,
    EnumerationItems,
    EnumerationValue,
    IndexZero,
    InflowRepeated,
    MappingIncomplete,
    MappingRepeated,
    MappingSource,
    MappingTarget,
    SizeConnector,
    StructCrossed,
    StructPartial,
    TransformationType,
    TypeIncompatible,
    TypeLossy,
    TypeWidened,
    UnitConversion,
    UnitIncompatible,
    UnitRadian,
    UnitSuppressed,
    UnitUndecided,

    MappingNameRepeated,
    MappingSourceUnmatched,
    MappingTargetUnmatched,
    ParameterConversion,
    ParameterDimension,
    ParameterForbidden,
    ParameterItem,
    ParameterLossy,
    ParameterOverridden,
    ParameterRange,
    ParameterRepeated,
    ParameterType,
    ParameterUnit,
    ParameterUnmatched,
    ParameterValue,

    ConversionMissing,
    DimensionForm,
    FactContradiction,
    FactInvalid,
    FactRemark,
    TypeRemark,
    ValuesLost,
};
inline constexpr std::size_t ruleCount = static_cast<std::size_t>(Code::ValuesLost) + 1;

struct Rule {
    Code code;
    const char* name; ///< stable
    Severity severity;
    Area area;
    const char* meaning; ///< one sentence
    const char* advice;  ///< what to do, as one sentence in the imperative
    const char* folded;  ///< after a number of 3 or more: "display units have ..."
};

/// Returns the table, in the order of Code.
std::span<const Rule> rules();

const Rule& ruleOf(Code code);

/// Returns the rules as a Markdown document, which is docs/findings.md.
std::string rulesDocument();

/// Returns "error", "warning" or "note".
const char* severityName(Severity severity);

} // namespace tvtool::findings
