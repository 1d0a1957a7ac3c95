#include "findings/findings.h"

#include <boost/container_hash/hash.hpp>

#include <algorithm>
#include <numeric>
#include <tuple>

namespace tvtool::findings {

namespace {

void addPlace(Finding& finding, const Place& place) {
    ++finding.count;
    finding.lastLine = std::max(finding.lastLine, place.line);
    if (place.line < finding.line) {
        finding.line = place.line;
        finding.column = place.column;
    }
}

} // namespace

void Findings::addFurther(Code code, const Place& place) {
    std::uint32_t& further = further_[static_cast<std::size_t>(code)];
    if (further == 0) {
        all_.push_back({code,
                        SubjectKind::File,
                        place.line,
                        place.column,
                        1,
                        place.line,
                        {},
                        {},
                        {},
                        "there are more findings of this kind, which are not listed"});
        further = static_cast<std::uint32_t>(all_.size());
    } else {
        addPlace(all_[further - 1], place);
    }
}

void Findings::insert(Code code, const Place& place, Subject subject, std::string_view cause,
                      std::string sentence) {
    std::size_t hash = static_cast<std::size_t>(code);
    boost::hash_combine(hash, place.element);
    boost::hash_combine(hash, sentence);
    const auto [begin, end] = known_.equal_range(hash);
    for (auto entry = begin; entry != end; ++entry) {
        Finding& first = all_[entry->second];
        if (first.code == code && first.element == place.element && first.sentence == sentence) {
            return addPlace(first, place);
        }
    }
    ++distinct_[static_cast<std::size_t>(code)];
    known_.emplace(hash, static_cast<std::uint32_t>(all_.size()));
    all_.push_back({code, subject.kind, place.line, place.column, 1, place.line,
                    std::string(place.element), std::string(subject.name), std::string(cause),
                    std::move(sentence)});
}

void Findings::sort() {
    known_.clear();
    // Sorts indices, since moving the findings is slow.
    std::vector<std::uint32_t> order(all_.size());
    std::iota(order.begin(), order.end(), 0U);
    std::ranges::stable_sort(order, {}, [this](std::uint32_t index) {
        const Finding& finding = all_[index];
        return std::tuple(ruleOf(finding.code).severity, finding.line, finding.column);
    });
    std::vector<Finding> sorted;
    sorted.reserve(all_.size());
    for (const std::uint32_t index : order) {
        sorted.push_back(std::move(all_[index]));
    }
    all_ = std::move(sorted);
}

std::size_t Findings::count(Severity severity) const {
    std::size_t count = 0;
    for (const Finding& finding : all_) {
        count += ruleOf(finding.code).severity == severity ? finding.count : 0;
    }
    return count;
}

std::size_t Findings::count(Severity severity, Area area) const {
    std::size_t count = 0;
    for (const Finding& finding : all_) {
        const Rule& rule = ruleOf(finding.code);
        count += rule.severity == severity && rule.area == area ? finding.count : 0;
    }
    return count;
}

} // namespace tvtool::findings
