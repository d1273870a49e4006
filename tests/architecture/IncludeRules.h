#pragma once

#include <QString>

/// Judges one include of one source file by the table of who may include whom. `file` is a path from the
/// project's root, `include` what stands between the quotes or brackets. Empty when it is allowed, else what
/// is wrong.
QString whatIsWrongWith(const QString& file, const QString& include);

/// The table's row for a file, the folder it belongs to; empty when the table has none.
QString roomOf(const QString& file);
