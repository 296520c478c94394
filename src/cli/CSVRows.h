#pragma once

#include "cli/Context.h"
#include "export/StorageStatement.h"

#include <initializer_list>
#include <string_view>

namespace brindle {

/// Prints a row of CSV (RFC 4180), whose cells are written as those of a storage statement. The cells need to
/// live no longer than the call. What is not known is an empty text.
void printRow(Output& output, std::initializer_list<storageStatement::Cell> cells);

/// Throws: UsageError when JSON is asked for as well.
void refuseTwoForms(const Context& context, bool asCSV);

}  // namespace brindle
