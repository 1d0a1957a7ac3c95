#include "reader.h"

#include <fndi18n/ustring.h>

#include <boost/json/basic_parser_impl.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <utility>
#include <vector>

namespace oxd {

namespace {

using boost::json::error_code;
using boost::json::string_view;

constexpr std::size_t maximumFields = std::size_t{1} << 24;

/// Equality that distinguishes 0 and -0.
bool sameBits(double left, double right) {
    return left == right && std::signbit(left) == std::signbit(right);
}

std::string_view toStd(string_view text) { return {text.data(), text.size()}; }

/// An array of records during parsing.
class Table {
  public:
    void beginRecord() {
        ++count_;
        next_ = 0;
    }

    /// Selects a field of the last record. Returns false if the record has it already.
    bool select(std::string_view name) {
        place_ = placeOf(name);
        next_ = place_ + 1;
        return std::exchange(lastRecordWith_[place_], count_) != count_;
    }

    const std::string& fieldName() const { return names_[place_]; }

    void put(Value value) { cells_.push_back({count_ - 1, place_, std::move(value)}); }

    /// Shares the value of a cell with the previous one of its column if they are equal, which is
    /// frequent.
    /// \param lasts whether the characters outlive the table; if not, the next cell does not share
    void putText(std::string_view text, bool lasts) {
        Latest& latest = latest_[place_];
        if (latest.text != nullptr && latest.characters == text) {
            putAgain(latest.text);
            return;
        }
        oxArray_tag* const value = oxCreateString(std::string(text));
        put(Value(value));
        latest.text = lasts ? value : nullptr;
        latest.characters = text;
    }
    void putNumber(double number) {
        Latest& latest = latest_[place_];
        if (latest.number == nullptr || !sameBits(latest.value, number)) {
            latest.value = number;
            latest.number = oxCreateDoubleScalar(number);
            put(Value(latest.number));
        } else {
            putAgain(latest.number);
        }
    }

    /// Returns the number of fields of all records, with empty ones.
    std::size_t size() const { return count_ * names_.size(); }

    Value finish() {
        Value records(oxCreateRecords(count_, names_));
        for (Cell& cell : cells_) {
            oxSetFieldAt(records.get(), cell.record, cell.place, cell.value.release());
        }
        return records;
    }

  private:
    struct Cell {
        std::size_t record;
        std::size_t place;
        Value value;
    };
    /// Last text and number of a column, which a cell owns.
    struct Latest {
        oxArray_tag* text = nullptr;
        std::string_view characters; ///< content of the text
        oxArray_tag* number = nullptr;
        double value = 0; ///< content of the number
    };

    void putAgain(oxArray_tag* value) {
        oxShareArray(value);
        put(Value(value));
    }

    std::size_t placeOf(std::string_view name) {
        // Most records have their fields in the same order.
        if (next_ < names_.size() && names_[next_] == name) {
            return next_;
        }
        const auto known = places_.find(name);
        if (known != places_.end()) {
            return known->second;
        }
        const std::size_t place = names_.size();
        places_.emplace(name, place);
        names_.emplace_back(name);
        latest_.emplace_back();
        lastRecordWith_.push_back(0);
        return place;
    }

    std::size_t count_ = 0;
    std::size_t place_ = 0;
    std::size_t next_ = 0;
    std::vector<std::string> names_;
    std::map<std::string, std::size_t, std::less<>> places_;
    std::vector<std::size_t> lastRecordWith_; // by field; records count from 1
    std::vector<Latest> latest_;              // by field
    std::deque<Cell> cells_;                  // a vector would move all of them when it grows
};

/// Event handler of the JSON parser, which builds the values. A string or name with escapes is
/// delivered in parts.
class Builder {
  public:
    static constexpr std::size_t max_object_size = SIZE_MAX;
    static constexpr std::size_t max_array_size = SIZE_MAX;
    static constexpr std::size_t max_key_size = SIZE_MAX;
    static constexpr std::size_t max_string_size = SIZE_MAX;

    Value take() { return std::move(result_); }
    const std::string& error() const { return error_; }

    bool on_document_begin(error_code&) { return true; }
    bool on_document_end(error_code&) { return true; }

    bool on_object_begin(error_code& error) {
        if (tables_.empty()) {
            tables_.emplace_back();
        } else if (inRecord_) {
            return fail(error, "an object is not allowed outside an array");
        }
        tables_.back().beginRecord();
        inRecord_ = true;
        return true;
    }

    bool on_object_end(std::size_t, error_code& error) {
        inRecord_ = false;
        return tables_.size() > 1 || finishTable(error);
    }

    bool on_array_begin(error_code& error) {
        if (!inRecord_) {
            return fail(error, notARecordReason());
        }
        tables_.emplace_back();
        inRecord_ = false;
        return true;
    }

    bool on_array_end(std::size_t, error_code& error) { return finishTable(error); }

    bool on_key_part(string_view part, std::size_t, error_code&) { return append(part); }

    bool on_key(string_view part, std::size_t, error_code& error) {
        const bool isNew = tables_.back().select(whole(part));
        partial_.clear();
        return isNew || fail(error, "the name \"" + tables_.back().fieldName() +
                                        "\" is duplicated in one object");
    }

    bool on_string_part(string_view part, std::size_t, error_code&) { return append(part); }

    bool on_string(string_view part, std::size_t, error_code& error) {
        if (!inRecord_) {
            return fail(error, notARecordReason());
        }
        const bool isWhole = partial_.empty(); // a part of the text that is parsed
        tables_.back().putText(whole(part), isWhole);
        partial_.clear();
        return true;
    }

    bool on_number_part(string_view part, error_code&) { return append(part); }

    bool on_int64(std::int64_t value, string_view part, error_code& error) {
        // -0 is an integer for the parser, and not one as a double.
        constexpr std::int64_t bound = std::int64_t{1} << 53;
        if (-bound < value && value < bound && (value != 0 || (partial_.empty() && part == "0"))) {
            partial_.clear();
            return putNumber(static_cast<double>(value), error);
        }
        return onNumber(static_cast<double>(value), part, error);
    }

    bool on_uint64(std::uint64_t value, string_view part, error_code& error) {
        return onNumber(static_cast<double>(value), part, error);
    }

    bool on_double(double value, string_view part, error_code& error) {
        return onNumber(value, part, error);
    }

    bool on_bool(bool, error_code& error) {
        return fail(error, "true and false are not allowed as values");
    }

    bool on_null(error_code& error) {
        if (!inRecord_) {
            return fail(error, notARecordReason());
        }
        return tables_.size() > 1 || fail(error, "null is not allowed as the value of a variable");
    }

    // The parser allows no comments.
    bool on_comment_part(string_view, error_code&) { return true; }
    bool on_comment(string_view, error_code&) { return true; }

  private:
    bool fail(error_code& error, std::string reason) {
        error_ = std::move(reason);
        error = boost::json::error::input_error;
        return false;
    }

    std::string notARecordReason() const {
        return tables_.empty() ? "the file does not begin with an object"
                               : "an array has an element that is not an object";
    }

    bool append(string_view part) {
        partial_ += toStd(part);
        return true;
    }

    /// Returns the preceding parts with the last one; valid until either changes.
    std::string_view whole(string_view part) {
        if (partial_.empty()) {
            return toStd(part);
        }
        partial_ += toStd(part);
        return partial_;
    }

    /// Converts digits with correct rounding. The parser's own value can be off by one unit in the
    /// last place, and is used only to distinguish overflow from underflow.
    bool onNumber(double approximate, string_view part, error_code& error) {
        const std::string_view digits = whole(part);
        double value = 0;
        const auto [end, failure] =
            std::from_chars(digits.data(), digits.data() + digits.size(), value);
        partial_.clear();
        if (failure == std::errc::result_out_of_range) {
            if (std::fabs(approximate) > 1) {
                return fail(error, "a number is too large for a double");
            }
            value = std::copysign(0.0, approximate);
        }
        return putNumber(value, error);
    }

    bool putNumber(double value, error_code& error) {
        if (!inRecord_) {
            return fail(error, notARecordReason());
        }
        tables_.back().putNumber(value);
        return true;
    }

    bool finishTable(error_code& error) {
        const std::size_t size = tables_.back().size();
        if (size > maximumFields - fields_) {
            return fail(error, "the records have more than 2^24 fields");
        }
        fields_ += size;
        Value records = tables_.back().finish();
        tables_.pop_back();
        if (tables_.empty()) {
            result_ = std::move(records);
        } else {
            inRecord_ = true;
            tables_.back().put(std::move(records));
        }
        return true;
    }

    std::deque<Table> tables_; // nested arrays, outermost first; the first is the file itself
    bool inRecord_ = false;    // false between the records of the innermost table
    std::size_t fields_ = 0;
    std::string partial_;
    std::string error_;
    Value result_;
};

bool isUtf8(std::string_view text) {
    const std::string narrow(text);
    return ConvertUStringToStdString(ConvertStdStringToUString(narrow, true), true) == narrow;
}

std::string describeError(std::string_view text, std::size_t offset, const std::string& reason) {
    const std::string_view before = text.substr(0, offset);
    const auto lines = std::count(before.begin(), before.end(), '\n');
    const std::string_view line = before.substr(before.rfind('\n') + 1);
    const auto characters = std::count_if(line.begin(), line.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; // not a continuation byte
    });
    return "line " + std::to_string(lines + 1) + ", column " + std::to_string(characters + 1) +
           ": " + reason;
}

} // namespace

Reading read(std::string_view text) {
    boost::json::basic_parser<Builder> parser{boost::json::parse_options()};
    error_code error;
    const std::size_t stop = parser.write_some(false, text.data(), text.size(), error);
    if (!error && stop < text.size()) {
        error = boost::json::error::extra_data;
    }
    Builder& builder = parser.handler();
    if (!error) {
        return {builder.take(), {}};
    }
    std::string reason = builder.error().empty() ? error.message() : builder.error();
    if (error == boost::json::error::syntax && !isUtf8(text)) {
        reason = "the text is not UTF-8";
    }
    return {nullptr, describeError(text, stop, reason)};
}

} // namespace oxd
