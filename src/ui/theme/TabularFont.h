#pragma once

#include <QFont>
#include <QString>

namespace brindle {

/// The family of a copy of the font whose digits are all equally wide, so that amounts stand in columns.
///
/// The copy is made in memory and known to this process only: in it the substitution that the font keeps for
/// this (the OpenType feature "tnum") is one that always applies, as QFont cannot ask for it. Where the
/// font's digits are equally wide anyway, its own family; where it has no such substitution, that of a font
/// of the system whose digits are. Each weight has to be asked for once, and then makes up the same family.
[[nodiscard]] QString tabularFamily(const QFont& font);

/// Whether each digit is as wide as any other, to half a percent: some fonts round their widths.
[[nodiscard]] bool hasTabularDigits(const QFont& font);

}  // namespace brindle
