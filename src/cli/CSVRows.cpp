#include "cli/CSVRows.h"

#include "model/Translation.h"

namespace brindle {

void printRow(Output& output, std::initializer_list<storageStatement::Cell> cells) {
    std::string line;
    for (const auto& cell : cells) {
        if (&cell != cells.begin()) line += ',';
        line += storageStatement::encoded(cell);
    }
    output.text(line + "\r\n");
}

void refuseTwoForms(const Context& context, bool asCSV) {
    if (context.asJson && asCSV) throw UsageError(translated("Give one of --json and --csv."));
}

}  // namespace brindle
