#include "frontend/accounts/matrix.h"

#include "frontend/base/csv.h"
#include "frontend/base/decimals.h"

#include <vector>

namespace orvex::frontend {

std::string matrix_csv(const Books& books, const Matrix& matrix, std::string_view corner) {
    const std::vector<AccountIndex> order = by_kind(books);
    std::string text = csv_cell(corner);
    for (const AccountIndex column : order)
        text.append(",") += csv_cell(books.accounts[column].name);
    text += '\n';
    for (const AccountIndex row : order) {
        text += csv_cell(books.accounts[row].name);
        for (const AccountIndex column : order) {
            text += ',';
            const auto cell = matrix.find({row, column});
            if (cell != matrix.end()) text += shortest_decimal(cell->second);
        }
        text += '\n';
    }
    return text;
}

}  // namespace orvex::frontend
