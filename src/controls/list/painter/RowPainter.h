// Paints rows with the window style's own pieces, so that a list looks like any other of the system.
#pragma once

#include "controls/list/ListTypes.h"
#include "controls/list/layout/ListLayout.h"

#include <QColor>
#include <QPalette>
#include <QStyleOptionViewItem>

#include <optional>

class QPainter;
class QWidget;
class TImageList;
class TListColumn;
class TRowSource;

// What one row looks like now.
struct TRowLook {
  unsigned State = 0;
  bool Hovered = false;
};

// Lives for one paint.
class TRowPainter {
 public:
  struct TImages {
    const TImageList* Small = nullptr;
    const TImageList* State = nullptr;
  };

  TRowPainter(QPainter& painter, const QWidget& widget, const TListLayout& layout, const TRowSource& source,
              const TListViewOptions& options, TImages images);

  void Paint(int row, TRowLook look);
  // The focus of a list without rows.
  void PaintEmpty();

  // The lines between rows and columns, over the whole client area.
  void PaintGrid();

 private:
  struct THighlight {
    QColor Background;
    QPalette::ColorRole Text;
  };

  void PaintBackground(int row, TRowLook look);
  void PaintCell(int row, int column, unsigned state);
  void PaintCheckBox(const QRect& rect, bool checked);
  void PaintText(const QRect& rect, const QString& text, const TListColumn& column, unsigned state);
  void PaintFocus(const QRect& rect, bool highlighted);
  void PaintHighlight(QPainter& painter, const QRect& rect) const;
  [[nodiscard]] const THighlight& Highlight();
  [[nodiscard]] bool Highlighted(unsigned state) const;
  [[nodiscard]] QRect HighlightRect(int row) const;

  QPainter& FPainter;
  const QWidget& FWidget;
  const TListLayout& FLayout;
  const TRowSource& FSource;
  const TListViewOptions& FOptions;
  TImages FImages;
  QStyleOptionViewItem FStyleOption;
  std::optional<THighlight> FHighlight;  // once it was asked for
};

// The alignment flags of a column's cells and caption.
[[nodiscard]] Qt::Alignment CellAlignment(const TListColumn& column);
