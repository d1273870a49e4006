#pragma once

#include <QFrame>
#include <QList>
#include <QMap>
#include <QPair>

class CCrossSplitterHandle;
class CSplitterHandle;

/// A square grid of panes with draggable gaps. A gap moves through all rows or columns at once; a handle at
/// each crossing moves both of its gaps. Every resize of the grid makes all panes equal again.
class CGridSplitter : public QFrame
{
    Q_OBJECT

public:
    explicit CGridSplitter(QWidget* parent);
    ~CGridSplitter() override;

    /// Fills the grid row by row with `rows` x `columns` widgets, which it owns from then on; the panes and
    /// handles that it had are deleted, so the list holds none of them. As many rows as columns are a
    /// precondition of the layout. Answers 0; -2 for an empty list, -1 for a list of another size, both of
    /// which leave the grid as it was.
    int setWidgets(QList<QWidget*> widgets, int rows, int columns);

public slots:
    /// Gives all panes the same size.
    void snapToGrid();
    /// Moves gap `index` by `delta` pixels, unless its handle would leave the grid.
    void moveSplitter(int index, Qt::Orientation orientation, int delta);
    /// Moves both gaps of crossing `num`, each by itself.
    void moveCrossSplitter(int num, int dx, int dy);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Pane
    {
        int column;
        int row;
        QWidget* widget;
    };
    struct Crossing
    {
        int column;
        int row;
        CCrossSplitterHandle* handle;
    };

    void deletePanes();
    void deleteHandles();
    void addHandle(int num, Qt::Orientation orientation);
    QList<CSplitterHandle*> handlesOfGap(int gap) const;
    CSplitterHandle* handleAt(int gap, int place, Qt::Orientation orientation) const;
    bool moveHandles(int index, Qt::Orientation orientation, int delta);

    QMap<int, Pane> panes;               ///< running number, row by row
    QMap<int, CSplitterHandle*> handles; ///< gap number; a number holds a vertical and a horizontal handle
    QMap<int, Crossing> crossings;       ///< row x columns + column
    int handleSize;                      ///< thickness of every gap in pixels
    QList<QPair<int, int>> cells;        ///< (column, row) of each pane; the last one is bottom right
    int rowCount;
    int columnCount;
};
