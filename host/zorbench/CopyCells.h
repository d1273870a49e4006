#pragma once

class QTableView;

namespace zor {

/// Gives a table a context menu with "Copy", which Ctrl+C does as well: the selected cells as text, lines of
/// fields with tabs between them, or without a selection the whole table with its headers.
void offerCopy(QTableView& table);

} // namespace zor
