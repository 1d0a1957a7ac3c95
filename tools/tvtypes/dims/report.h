/// \file
/// Reports on symbolic dimensions, as text and as JSON.
///
/// The JSON is one object in one line. Its member names are stable; absent values are null, absent
/// lists empty.
///
/// | Report  | Members                                                                          |
/// |---------|----------------------------------------------------------------------------------|
/// | details | `dimensions`: array of `text`, `id`, `simplified`, `simplifiedId`, `size` and    |
/// |         | `sizeId` (of a list: the product), `obstacle` (what prevented the                |
/// |         | simplification), `equals` (index of an earlier one with the same simplified      |
/// |         | form)                                                                            |
/// | facts   | `file`, `stated` (number of lines that state a fact), `answers`: array of        |
/// |         | `line`, `text`, `answer` (of the library: `yes`, `no` or `not known`), `follows` |
/// |         | (the same, from all facts and from numbers), `because`; `contradictions`: array  |
/// |         | of `line`, `text`, `block`, `refused` (by the library), `because`; `notes`:      |
/// |         | array of `line`, `sentence`; `facts`: array of `id`, `text`, `blocks`; `faults`: |
/// |         | array of `line`, `column`, `sentence`; `lastLine` (the line at which reading     |
/// |         | ended early)                                                                     |
/// | reason  | `because`: object of `steps` (array of `text`, `line`, `block`), `omitted`       |
/// |         | (number of steps left out in the middle), `sentence`                             |
#pragma once

#include "dims/details.h"
#include "dims/fact_records.h"
#include "output/columns.h"

#include <ostream>
#include <vector>

namespace tvtool::dims {

extern const output::Columns<DimsFact> factColumns;

void printText(const std::vector<DimsDetails>& dimensions, bool colour, std::ostream& os);
void printJson(const std::vector<DimsDetails>& dimensions, std::ostream& os);
/// \param isListed whether to print all facts as well
void printText(const FactReport& report, bool isListed, bool colour, std::ostream& os);
void printJson(const FactReport& report, std::ostream& os);

} // namespace tvtool::dims
