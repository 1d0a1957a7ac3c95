#include "solver/tableau.h"

#include <utility>

namespace tvtool::solver {

Column Tableau::addColumn() {
    rows_.emplace_back();
    uses_.emplace_back();
    return size() - 1;
}

void Tableau::removeLastColumn() {
    rows_.pop_back();
    uses_.pop_back();
}

void Tableau::substitute(Column basic, Column column, const LinearForm& form) {
    LinearForm& row = *rows_[basic];
    if (!row.substitute(column, form)) {
        return;
    }
    uses_[column].erase(basic);
    for (const LinearForm::Term& term : form.terms()) {
        if (row.find(term.column) != nullptr) {
            uses_[term.column].insert(basic);
        } else {
            uses_[term.column].erase(basic);
        }
    }
}

std::optional<LinearForm> Tableau::set(Column column, std::optional<LinearForm> row) {
    std::optional<LinearForm>& stored = rows_[column];
    // Most columns of the new row were in the old one.
    if (stored) {
        for (const LinearForm::Term& term : stored->terms()) {
            if (!row || row->find(term.column) == nullptr) {
                uses_[term.column].erase(column);
            }
        }
    }
    if (row) {
        for (const LinearForm::Term& term : row->terms()) {
            if (!stored || stored->find(term.column) == nullptr) {
                uses_[term.column].insert(column);
            }
        }
    }
    return std::exchange(stored, std::move(row));
}

} // namespace tvtool::solver
