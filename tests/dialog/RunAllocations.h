#pragma once

#include <QSet>
#include <QString>

/// The allocations of a run in their order. The second column pass repeats the first one's four.
enum Place
{
    Image,
    ColumnMean,
    RowMean,
    Codes1,
    FlatX1,
    Offset1,
    FlatColumnMean1,
    Codes2,
    FlatX2,
    Offset2,
    FlatColumnMean2,
    RowCodes,
    FlatY,
    FlatRowMean,
    FlatColumnMean3, ///< only with "Show Flat Y"
    Histogram,
    Plan,
    Buffer,
    ColumnLine,
    RowLine,
    FlatColumnLine,
    FlatRowLine,
    PlaceCount
};

const char* const PlaceNames[PlaceCount] = {"the frame's copy",
                                            "column means",
                                            "row means",
                                            "column codes",
                                            "column-corrected image",
                                            "offset frame",
                                            "corrected column means",
                                            "column codes, second pass",
                                            "column-corrected image, second pass",
                                            "offset frame, second pass",
                                            "corrected column means, second pass",
                                            "row codes",
                                            "image after both passes",
                                            "corrected row means",
                                            "corrected column means after both passes",
                                            "histogram",
                                            "histogram plan",
                                            "histogram work buffer",
                                            "column line",
                                            "row line",
                                            "corrected column line",
                                            "corrected row line"};

/// What a run looks like after one of its allocations has failed.
struct Outcome
{
    int boxes;
    bool answer;
    QSet<QString> missing; ///< members that are null
};

/// For a run on a dialog that has computed before, or has not.
inline Outcome outcomeOf(Place place, bool showRows, bool again)
{
    // A line array of the last run survives; without one all four are null until their own stage is done.
    const QSet<QString> lines =
        again ? QSet<QString>() : QSet<QString>{"columnLine", "rowLine", "flatColumnLine", "flatRowLine"};
    const QSet<QString> flatLines = again ? QSet<QString>() : QSet<QString>{"flatColumnLine", "flatRowLine"};
    const auto first = [&](QSet<QString> own, const QSet<QString>& later) {
        return Outcome{1, false, own.unite(lines).unite(again ? QSet<QString>() : later)};
    };
    const QSet<QString> histogram{"histogram"};
    const QSet<QString> rowPass{"flatY", "flatRowMean", "histogram"};
    const QSet<QString> columnPass = QSet<QString>{"flatX", "flatColumnMean"}.unite(rowPass);
    switch (place) {
    case ColumnMean:
        return first({"columnMean"}, QSet<QString>{"rowMean"}.unite(columnPass));
    case RowMean:
        return first({"rowMean"}, columnPass);
    case Codes1:
        return first({}, columnPass);
    case FlatX1:
        return first({"flatX"}, QSet<QString>{"flatColumnMean"}.unite(rowPass));
    case Offset1:
        return first({}, QSet<QString>{"flatColumnMean"}.unite(rowPass));
    case FlatColumnMean1:
        return first({"flatColumnMean"}, rowPass);
    case Codes2:
    case Offset2:
        // Ignored: the row pass goes on with the cells that are there.
        return {1, true, {}};
    case FlatColumnMean2:
        return {1, true, showRows ? QSet<QString>() : QSet<QString>{"flatColumnMean"}};
    case FlatX2:
        // Ignored too, but no cells are left to go on with; still one box.
        return first({"flatX"}, rowPass);
    case RowCodes:
        return first({}, rowPass);
    case FlatY:
        return first({"flatY"}, {"flatRowMean", "histogram"});
    case FlatRowMean:
        return first({"flatRowMean"}, histogram);
    case FlatColumnMean3:
        return first({"flatColumnMean"}, histogram);
    case Histogram:
        return first({"histogram"}, {});
    case Plan:
    case Buffer:
        return {0, true, {}};
    case ColumnLine:
    case RowLine:
        return first({}, {});
    case FlatColumnLine:
    case FlatRowLine:
        return {1, false, flatLines};
    default:
        return {0, true, {}};
    }
}
