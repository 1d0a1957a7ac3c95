/// \file
/// Reports on units, as text and as JSON.
///
/// The JSON is one object in one line. Its member names, which the columns in report.cpp list, are
/// stable; absent values are null, absent lists empty.
#pragma once

#include "output/failure.h"
#include "units/conversion.h"
#include "units/details.h"
#include "units/factor.h"
#include "units/search.h"

#include <ostream>
#include <string>
#include <vector>

namespace tvtool::units {

/// Returns the sentences about the arguments: those about their reading, then that about the factor
/// of the library.
std::vector<std::string> allNotes(std::vector<std::string> notes, const std::string& libraryNote);

void printText(const std::vector<UnitDetails>& units, bool colour, std::ostream& os);
void printJson(const std::vector<UnitDetails>& units, std::ostream& os);
void printText(const UnitFactor& factor, bool colour, std::ostream& os);
void printJson(const UnitFactor& factor, std::ostream& os);
void printText(const std::vector<UnitLine>& lines, bool colour, std::ostream& os);
void printJson(const std::vector<UnitLine>& lines, std::ostream& os);
void printText(const std::vector<UnitWord>& words, bool colour, std::ostream& os);
void printJson(const std::vector<UnitWord>& words, std::ostream& os);

/// Report on converted values, which is printed while they are computed. In JSON it is one object,
/// whose member "values" is a list.
class ConversionReport {
  public:
    /// Prints the beginning. The references must outlive the report.
    ConversionReport(const ValueConversion& conversion, bool isJson, std::ostream& os);

    void add(const ConvertedValue& value);
    /// Prints the end, in JSON with the error that ended the input, if there is one. Nothing may be
    /// added after it.
    void finish(const output::Failure* failure = nullptr);

  private:
    const ValueConversion& conversion_;
    bool isJson_;
    std::ostream& os_;
    const char* separator_ = "";
};

} // namespace tvtool::units
