#include "host/zorbench/CopyCells.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QTableView>

#include <algorithm>

namespace zor {

namespace {

QString header(const QAbstractItemModel& model, int section, Qt::Orientation orientation)
{
    return model.headerData(section, orientation).toString();
}

QString wholeText(const QAbstractItemModel& model)
{
    QStringList head{QString()};
    for (int column = 0; column < model.columnCount(); ++column)
        head.append(header(model, column, Qt::Horizontal));
    QStringList lines{head.join(QLatin1Char('\t'))};
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList fields{header(model, row, Qt::Vertical)};
        for (int column = 0; column < model.columnCount(); ++column)
            fields.append(model.index(row, column).data().toString());
        lines.append(fields.join(QLatin1Char('\t')));
    }
    return lines.join(QLatin1Char('\n'));
}

QString textOf(QModelIndexList cells)
{
    std::sort(cells.begin(), cells.end());
    QString text;
    for (int i = 0; i < cells.size(); ++i) {
        if (i > 0)
            text += QLatin1Char(cells[i].row() == cells[i - 1].row() ? '\t' : '\n');
        text += cells[i].data().toString();
    }
    return text;
}

} // namespace

void offerCopy(QTableView& table)
{
    auto* copy = new QAction(QTableView::tr("Copy"), &table);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    table.addAction(copy);
    table.setContextMenuPolicy(Qt::ActionsContextMenu);
    QObject::connect(copy, &QAction::triggered, &table, [&table] {
        const QModelIndexList selected = table.selectionModel()->selectedIndexes();
        QGuiApplication::clipboard()->setText(selected.isEmpty() ? wholeText(*table.model())
                                                                 : textOf(selected));
    });
}

} // namespace zor
