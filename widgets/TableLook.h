#pragma once

class QString;
class QTableView;

namespace shotweaver {

/// Points that a row of a table is high, as well as its header.
inline constexpr int tableRowHeight = 24;

/// Gives a table the look of all tables: rows of one height, no grid, cells inset like the header,
/// whose titles are shortened where they do not fit. Before the columns are set up.
void applyTableLook(QTableView& table);

/// The width of a column that shows all of its title, pixels.
int columnWidthFor(const QTableView& table, const QString& title);

} // namespace shotweaver
