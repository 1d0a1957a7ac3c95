#include "findings/folding.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace tvtool::findings {

namespace {

constexpr std::size_t noFold = static_cast<std::size_t>(-1);

Fold foldOf(const Finding& finding, std::size_t index) {
    return {index, {}, 1, finding.count, finding.line, finding.lastLine};
}

void add(Fold& fold, const Finding& finding) {
    ++fold.findings;
    fold.elements += finding.count;
    if (finding.line != 0) {
        fold.firstLine =
            fold.firstLine == 0 ? finding.line : std::min(fold.firstLine, finding.line);
        fold.lastLine = std::max(fold.lastLine, finding.lastLine);
    }
}

} // namespace

const std::string& causeOf(const Finding& finding) {
    return finding.cause.empty() ? finding.subjectName : finding.cause;
}

std::vector<Fold> fold(const std::vector<Finding>& findings, bool isFolding) {
    std::vector<std::size_t> ofCode(rules().size(), 0);
    for (const Finding& finding : findings) {
        ++ofCode[static_cast<std::size_t>(finding.code)];
    }
    std::vector<std::size_t> foldOfCode(rules().size(), noFold);
    std::vector<std::unordered_set<std::string_view>> causes(rules().size());
    std::vector<Fold> folds;
    for (std::size_t i = 0; i < findings.size(); ++i) {
        const auto code = static_cast<std::size_t>(findings[i].code);
        if (!isFolding || ofCode[code] < leastFolded) {
            folds.push_back(foldOf(findings[i], i));
            continue;
        }
        if (foldOfCode[code] == noFold) {
            foldOfCode[code] = folds.size();
            folds.push_back(foldOf(findings[i], i));
        } else {
            add(folds[foldOfCode[code]], findings[i]);
        }
        const std::string& cause = causeOf(findings[i]);
        if (!cause.empty() && causes[code].insert(cause).second) {
            folds[foldOfCode[code]].causes.push_back(i);
        }
    }
    return folds;
}

} // namespace tvtool::findings
