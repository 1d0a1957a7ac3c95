#include "reader.h"

#include <fndi18n/ustring.h>

#include <boost/json/basic_parser_impl.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace oxd {

namespace {

using boost::json::error_code;
using boost::json::string_view;

constexpr std::size_t mostFields = std::size_t{1} << 24;

/// Equality that keeps 0 and -0 apart.
bool sameBits(double left, double right) {
    return left == right && std::signbit(left) == std::signbit(right);
}

std::string_view plain(string_view text) { return {text.data(), text.size()}; }

/// An array of records that is being read.
class Table {
  public:
    void beginRecord() {
        ++count_;
        next_ = 0;
    }

    /// Turns to a field of the last record; false if the record has it already.
    bool turnTo(std::string_view name) {
        place_ = placeOf(name);
        next_ = place_ + 1;
        return std::exchange(lastRecordWith_[place_], count_) != count_;
    }

    const std::string& fieldName() const { return names_[place_]; }

    void put(Value value) { cells_.push_back({count_ - 1, place_, std::move(value)}); }

    /// Columns repeat themselves: what equals the last text or number of its column shares it.
    void putText(std::string_view text) {
        Latest& latest = latest_[place_];
        if (latest.text == nullptr || latest.characters != text) {
            latest.characters = text;
            latest.text = oxCreateString(latest.characters);
            put(Value(latest.text));
        } else {
            putAgain(latest.text);
        }
    }
    void putNumber(double number) {
        Latest& latest = latest_[place_];
        if (latest.number == nullptr || !sameBits(oxGetScalar(latest.number), number)) {
            latest.number = oxCreateDoubleScalar(number);
            put(Value(latest.number));
        } else {
            putAgain(latest.number);
        }
    }

    /// The fields of all records, those that hold nothing included.
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
    /// The last values of a column, which a cell holds.
    struct Latest {
        oxArray_tag* text = nullptr;
        std::string characters; ///< of the text
        oxArray_tag* number = nullptr;
    };

    void putAgain(oxArray_tag* value) {
        oxShareArray(value);
        put(Value(value));
    }

    std::size_t placeOf(std::string_view name) {
        // Records mostly have their fields in the same order.
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
    std::vector<std::size_t> lastRecordWith_; // by field; records are counted from 1 here
    std::vector<Latest> latest_;              // by field
    std::vector<Cell> cells_;
};

/// Builds values from what the parser finds. A text or name comes in parts if it holds escapes, a
/// number only where it is cut.
class Builder {
  public:
    static constexpr std::size_t max_object_size = SIZE_MAX;
    static constexpr std::size_t max_array_size = SIZE_MAX;
    static constexpr std::size_t max_key_size = SIZE_MAX;
    static constexpr std::size_t max_string_size = SIZE_MAX;

    Value take() { return std::move(result_); }
    const std::string& refusal() const { return refusal_; }

    bool on_document_begin(error_code&) { return true; }
    bool on_document_end(error_code&) { return true; }

    bool on_object_begin(error_code& error) {
        if (tables_.empty()) {
            tables_.emplace_back();
        } else if (inRecord_) {
            return refuse(error, "an object stands where no array of records is");
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
            return refuse(error, notARecord());
        }
        tables_.emplace_back();
        inRecord_ = false;
        return true;
    }

    bool on_array_end(std::size_t, error_code& error) { return finishTable(error); }

    bool on_key_part(string_view part, std::size_t, error_code&) { return keep(part); }

    bool on_key(string_view part, std::size_t, error_code& error) {
        const bool isNew = tables_.back().turnTo(whole(part));
        kept_.clear();
        return isNew || refuse(error, "the name \"" + tables_.back().fieldName() +
                                          "\" stands twice in one object");
    }

    bool on_string_part(string_view part, std::size_t, error_code&) { return keep(part); }

    bool on_string(string_view part, std::size_t, error_code& error) {
        if (!inRecord_) {
            return refuse(error, notARecord());
        }
        tables_.back().putText(whole(part));
        kept_.clear();
        return true;
    }

    bool on_number_part(string_view part, error_code&) { return keep(part); }

    bool on_int64(std::int64_t value, string_view part, error_code& error) {
        constexpr std::int64_t mostExact = std::int64_t{1} << 53;
        if (value > 0 && value < mostExact) {
            kept_.clear();
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
        return refuse(error, "true and false are no values of a variable or a field");
    }

    bool on_null(error_code& error) {
        if (!inRecord_) {
            return refuse(error, notARecord());
        }
        return tables_.size() > 1 || refuse(error, "null is no value of a variable");
    }

    // The parser allows no comments.
    bool on_comment_part(string_view, error_code&) { return true; }
    bool on_comment(string_view, error_code&) { return true; }

  private:
    bool refuse(error_code& error, std::string reason) {
        refusal_ = std::move(reason);
        error = boost::json::error::input_error;
        return false;
    }

    std::string notARecord() const {
        return tables_.empty() ? "the file does not begin with an object, which holds the variables"
                               : "an array holds what is not an object, and so not a record";
    }

    bool keep(string_view part) {
        kept_ += plain(part);
        return true;
    }

    /// What was kept with the last part behind it; valid until either changes.
    std::string_view whole(string_view part) {
        if (kept_.empty()) {
            return plain(part);
        }
        kept_ += plain(part);
        return kept_;
    }

    /// The parser's own value may be off by the last digit, and so only tells large from small.
    bool onNumber(double approximate, string_view part, error_code& error) {
        const std::string_view digits = whole(part);
        double value = 0;
        const auto [end, failure] =
            std::from_chars(digits.data(), digits.data() + digits.size(), value);
        kept_.clear();
        if (failure == std::errc::result_out_of_range) {
            if (std::fabs(approximate) > 1) {
                return refuse(error, "a number is too large for a double");
            }
            value = std::copysign(0.0, approximate);
        }
        return putNumber(value, error);
    }

    bool putNumber(double value, error_code& error) {
        if (!inRecord_) {
            return refuse(error, notARecord());
        }
        tables_.back().putNumber(value);
        return true;
    }

    bool finishTable(error_code& error) {
        const std::size_t size = tables_.back().size();
        if (size > mostFields - fields_) {
            return refuse(error, "the records have more than 2^24 fields");
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

    std::vector<Table> tables_; // from the outside in; the first is the file's one record
    bool inRecord_ = false;     // and not between the records of the innermost table
    std::size_t fields_ = 0;
    std::string kept_;
    std::string refusal_;
    Value result_;
};

bool isUtf8(std::string_view text) {
    const std::string narrow(text);
    return ConvertUStringToStdString(ConvertStdStringToUString(narrow, true), true) == narrow;
}

std::string describe(std::string_view text, std::size_t offset, std::string reason) {
    const std::string_view before = text.substr(0, offset);
    const auto lines = std::count(before.begin(), before.end(), '\n');
    const std::string_view line = before.substr(before.rfind('\n') + 1);
    const auto characters = std::count_if(line.begin(), line.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; // the first of its bytes
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
    std::string reason = builder.refusal().empty() ? error.message() : builder.refusal();
    if (error == boost::json::error::syntax && !isUtf8(text)) {
        reason = "the text is not UTF-8";
    }
    return {nullptr, describe(text, stop, std::move(reason))};
}

} // namespace oxd
