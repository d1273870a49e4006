#pragma once

#include <array>

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

constexpr std::array<const char*, PlaceCount> PlaceNames = {"the frame's copy",
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

/// The number that the allocation has in a run, from 1.
constexpr int numberOf(Place place, bool showRows)
{
    return place > FlatColumnMean3 && !showRows ? place - 1 : place;
}

/// Failures that the run passes over: those of the second column pass, unless they leave no cells to go on
/// with, and those of the histogram's helpers.
constexpr bool runGoesOn(Place place)
{
    return place == Codes2 || place == Offset2 || place == FlatColumnMean2 || place == Plan ||
           place == Buffer;
}

/// What the run computes.
enum Member
{
    ColumnGains,
    ColumnMeans,
    RowMeans,
    FlatXCells,
    RowGains,
    FlatYCells,
    FlatColumnMeans,
    FlatRowMeans,
    Bins,
    ColumnLineItems,
    RowLineItems,
    FlatColumnLineItems,
    FlatRowLineItems,
    MemberCount
};

constexpr std::array<const char*, MemberCount> MemberNames = {
    "columnGains", "columnMean", "rowMean",    "flatX",   "rowGains",       "flatY",      "flatColumnMean",
    "flatRowMean", "histogram",  "columnLine", "rowLine", "flatColumnLine", "flatRowLine"};

/// What a member holds after a run in which one allocation failed.
enum class Content
{
    Kept,         ///< the block of the run before
    Missing,      ///< null, or an empty list
    Unwritten,    ///< a block that nothing has been written to
    Zero,         ///< a block of zeros
    Made,         ///< what a run without failure makes
    OfColumnPass, ///< column means of the image after the column pass, also with "Show Flat Y"
};

/// A member that is made from `made` on in the order of allocations: an earlier failure leaves the old block.
constexpr Content unlessReached(Place place, Place made)
{
    if (place < made)
        return Content::Kept;
    return place == made ? Content::Missing : Content::Made;
}

/// For the places at which the run stops.
constexpr Content afterAStop(Member member, Place place)
{
    switch (member) {
    case ColumnGains:
        return place <= RowMean ? Content::Missing : Content::Made;
    case ColumnMeans:
        return place == RowMean ? Content::Unwritten : unlessReached(place, ColumnMean);
    case RowMeans:
        return unlessReached(place, RowMean);
    case FlatXCells:
        return place == Offset1  ? Content::Zero
               : place == FlatX2 ? Content::Missing
                                 : unlessReached(place, FlatX1);
    case RowGains:
        return place <= FlatColumnMean1 ? Content::Kept : Content::Made;
    case FlatYCells:
        return unlessReached(place, FlatY);
    case FlatColumnMeans:
        if (place == FlatColumnMean3)
            return Content::Missing;
        return place > FlatColumnMean1 && place < FlatColumnMean3 ? Content::OfColumnPass
                                                                  : unlessReached(place, FlatColumnMean1);
    case FlatRowMeans:
        return unlessReached(place, FlatRowMean);
    case Bins:
        return unlessReached(place, Histogram);
    case ColumnLineItems:
    case RowLineItems:
        return place <= RowLine ? Content::Kept : Content::Made;
    default:
        return Content::Kept;
    }
}

constexpr Content contentAfter(Member member, Place place, bool showRows)
{
    if (!runGoesOn(place))
        return afterAStop(member, place);
    const bool ofRows = member == FlatYCells || member == FlatRowMeans || member == FlatRowLineItems;
    const bool ofColumns = member == FlatColumnMeans || member == FlatColumnLineItems;
    if (place == Offset2 && (member == FlatXCells || ofRows || (ofColumns && showRows)))
        return Content::Zero;
    if (place == FlatColumnMean2 && ofColumns && !showRows)
        return member == FlatColumnMeans ? Content::Missing : Content::Zero;
    if ((place == Plan || place == Buffer) && member == Bins)
        return Content::Zero;
    return Content::Made;
}
