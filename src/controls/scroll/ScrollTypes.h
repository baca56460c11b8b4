// What the parts of a skinned scroll bar are called, and what its events carry.
#pragma once

#include <QRect>

#include <functional>

class QPainter;
class TRdScrollBar;

enum class TScrollBarKind { Horizontal = 0, Vertical = 1 };

// A part of the bar. For a horizontal bar "top" is left, "bottom" is right, "up" is to the left.
enum class TScrollBarPos { None = 0, TopButton = 1, BottomButton = 2, Thumb = 3, PageUp = 4, PageDown = 5 };

enum class TButtonState { Hot = 0, Disabled = 1, Down = 2, Normal = 3 };

// What moved the bar.
enum class TIScrollCode { LineUp, LineDown, PageUp, PageDown, Position, Track, Top, Bottom };

// By what means, and which way: a sum of these.
using TScrollMode = unsigned;
inline constexpr TScrollMode kScrollByButton = 1;
inline constexpr TScrollMode kScrollByPage = 2;
inline constexpr TScrollMode kScrollByWheel = 4;
inline constexpr TScrollMode kScrollByThumb = 8;
inline constexpr TScrollMode kScrollUp = 16;
inline constexpr TScrollMode kScrollDown = 32;
inline constexpr TScrollMode kScrollByKey = 64;
inline constexpr TScrollMode kScrollByProgram = 128;  // ScrollBy and assistive tools

// The bar has moved by the hand of the user: Position is the new one already, changeValue the difference.
// startChange: the first of a row of changes, as opposed to repeats and moves of a held thumb.
using TScrollEvent = std::function<void(TRdScrollBar& sender, bool startChange, TIScrollCode code,
                                        TScrollMode mode, int changeValue)>;

// Called before a part is drawn with defaultDraw false: if it is left so, nothing more is drawn for the
// part. Otherwise called again after it with defaultDraw true.
using TScrollDrawEvent = std::function<void(QPainter& cav, TScrollBarPos typ, const QRect& rect,
                                            TButtonState state, bool& defaultDraw)>;
