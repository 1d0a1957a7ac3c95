/// \file
/// The variables of a model as rows of a report.
#pragma once

#include "model/model.h"
#include "report/options.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::report {

/// The sections of variables, in their order.
enum class Section : std::uint8_t { Inputs, Outputs, Parameters, Others };
inline constexpr std::size_t sectionCount = 4;

class Variables;

/// A variable, whose attributes are computed. Texts are views into the description or the report,
/// as written; empty where there are none.
struct VariableRow {
    const Variables* all;
    std::uint32_t index; ///< in the description

    const fmi::Variable& record() const;
    std::string_view name() const { return record().name; }
    std::string_view causality() const;
    std::string_view variability() const;
    std::string_view initial() const;
    std::string_view type() const; ///< its declared type, else its base type
    std::string_view baseType() const;
    std::string_view unit() const;
    std::string_view displayUnit() const; ///< its own or that of its type
    std::string_view dimensions() const;
    std::string_view start() const { return record().start; }
    std::string_view min() const;
    std::string_view max() const;
    std::string_view nominal() const;
    std::string_view description() const { return record().description; }
    std::span<const fmi::Alias> aliases() const;
};

/// A list of variables that computes its rows.
class VariableRows {
  public:
    VariableRows(const Variables& all, const std::vector<std::uint32_t>& indices)
        : all_(&all), indices_(&indices) {}

    std::size_t size() const { return indices_->size(); }
    bool empty() const { return indices_->empty(); }
    VariableRow operator[](std::size_t row) const { return {all_, (*indices_)[row]}; }

  private:
    const Variables* all_;
    const std::vector<std::uint32_t>* indices_;
};

/// The variables of a model that a report lists, by section, and the numbers of all of them.
class Variables {
  public:
    Variables(const model::Model& model, const Options& options);
    Variables(const Variables&) = delete;
    Variables& operator=(const Variables&) = delete;

    /// Returns the listed variables of a section, in the order of the options.
    VariableRows section(Section section) const { return {*this, listed_[position(section)]}; }
    /// Returns the listed variables of all sections, in the order of the options.
    std::vector<std::uint32_t> listed() const;
    /// Returns the number of variables of a section, whether they are listed or not.
    std::size_t count(Section section) const { return counts_[position(section)]; }
    /// Returns the number of variables that match the filters and are not listed.
    std::size_t unlistedMatches() const { return unlistedMatches_; }

    const model::Model& model() const { return model_; }
    /// Returns the dimensions of a variable; empty for a scalar.
    std::string_view dimensions(std::uint32_t variable) const;

  private:
    static std::size_t position(Section section) { return static_cast<std::size_t>(section); }
    void sort(std::vector<std::uint32_t>& indices) const;

    const model::Model& model_;
    const VariableOrder order_;
    std::array<std::vector<std::uint32_t>, sectionCount> listed_;
    std::array<std::size_t, sectionCount> counts_{};
    std::size_t unlistedMatches_ = 0;
    std::vector<std::string> dimensionTexts_;
    std::vector<std::uint32_t> dimensionOf_; ///< in dimensionTexts_; empty if there are no arrays
};

} // namespace tvtool::report
