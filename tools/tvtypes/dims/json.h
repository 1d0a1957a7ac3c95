/// \file
/// Symbolic dimensions for programs: one JSON object on one line, its member names stable.
///
/// | Of     | Members                                                                           |
/// |--------|-----------------------------------------------------------------------------------|
/// | sheets | `dimensions`: array of `text`, `id`, `simplified`, `simplifiedId`, `size` and     |
/// |        | `sizeId` (of a list: the product), `obstacle` (what kept it from being            |
/// |        | simplified), `equals` (the index of an earlier one with the same simplest form)   |
/// | facts  | `file`, `stated` (how many lines state a fact), `answers`: array of `line`,       |
/// |        | `text`, `answer` (of the library: `yes`, `no` or `not known`), `follows` (the     |
/// |        | same, from all that is stated and from numbers), `because`; `contradictions`:     |
/// |        | array of `line`, `text`, `block`, `refused` (by the library), `because`; `notes`: |
/// |        | array of `line`, `sentence`; `facts`: array of `id`, `text`, `blocks`; `faults`:  |
/// |        | array of `line`, `column`, `sentence`; `lastLine` (after which nothing was read)  |
/// | reason | `because`: object of `steps` (array of `text`, `line`, `block`), `omitted` (how   |
/// |        | many steps are left out in the middle), `sentence`                                |
///
/// What is empty or not to be had is null, but for arrays.
#pragma once

#include "dims/records.h"

#include <boost/json/fwd.hpp>

#include <ostream>

namespace tvtool::dims {

void printJson(const std::vector<DimsSheet>& sheets, std::ostream& os);
void printJson(const FactReport& report, std::ostream& os);

/// The rows of `facts`, for other reports.
boost::json::array jsonOf(const std::vector<DimsFact>& facts);

} // namespace tvtool::dims
