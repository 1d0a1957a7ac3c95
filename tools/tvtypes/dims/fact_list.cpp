#include "dims/fact_list.h"

#include "files/read_error.h"
#include "files/stream_errors.h"

#include <boost/json.hpp>

#include <array>
#include <cstddef>
#include <utility>

namespace tvtool::dims {

namespace {

namespace json = boost::json;

constexpr std::size_t longestReport = std::size_t{256} << 20;

json::value readJson(std::istream& is) {
    json::stream_parser parser;
    std::array<char, std::size_t{64} << 10> buffer{};
    std::size_t length = 0;
    boost::system::error_code error;
    while (!error && !is.eof()) {
        is.read(buffer.data(), buffer.size());
        length += static_cast<std::size_t>(is.gcount());
        if (length > longestReport) {
            throw files::ReadError("a report in JSON has at most 256 MiB");
        }
        parser.write(buffer.data(), static_cast<std::size_t>(is.gcount()), error);
    }
    if (!error) {
        parser.finish(error);
    }
    if (error) {
        throw files::ReadError("begins like JSON and is not: " + error.message());
    }
    return parser.release();
}

[[noreturn]] void failNoReport() {
    throw files::ReadError("is JSON, but no report with a list \"facts\" of objects with \"text\" "
                           "and \"blocks\"");
}

const json::array& arrayIn(const json::value& value, const char* member) {
    const json::object* const object = value.if_object();
    const json::value* const found = object == nullptr ? nullptr : object->if_contains(member);
    if (found == nullptr || !found->is_array()) {
        failNoReport();
    }
    return found->get_array();
}

std::string stringIn(const json::value* value) {
    if (value == nullptr || !value->is_string()) {
        failNoReport();
    }
    return std::string(value->get_string());
}

} // namespace

bool beginsLikeList(std::istream& is) {
    files::throwOnFailure(is);
    try {
        return is.peek() == '{';
    } catch (const std::ios_base::failure& failure) {
        throw files::ReadError(files::failureText(failure));
    }
}

FactList readFactList(std::istream& is) {
    json::value report;
    try {
        report = readJson(is);
    } catch (const std::ios_base::failure& failure) {
        throw files::ReadError(files::failureText(failure));
    }
    FactList list;
    if (const json::object* const object = report.if_object()) {
        const json::value* const integer = object->if_contains("integer");
        list.areWhole = integer == nullptr || !integer->is_bool() || integer->get_bool();
    }
    for (const json::value& entry : arrayIn(report, "facts")) {
        ListedFact fact;
        for (const json::value& block : arrayIn(entry, "blocks")) {
            fact.blocks.push_back(stringIn(&block));
        }
        if (fact.blocks.empty()) {
            fact.blocks.emplace_back();
        }
        fact.text = stringIn(entry.get_object().if_contains("text"));
        list.facts.push_back(std::move(fact));
    }
    return list;
}

} // namespace tvtool::dims
