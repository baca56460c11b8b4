// The scroll bars of a TRdListView: the host's own or the skinned ones, and how these mirror the host. The
// host owns the truth: its positions and ranges are copied to the skinned bars, whose moves go to the host.
// Main thread.
#pragma once

#include "controls/scroll/RdScrollBar.h"

#include <QMargins>

class TRdListView;

class TRdBars {
 public:
  explicit TRdBars(TRdListView& list);
  ~TRdBars();
  TRdBars(const TRdBars&) = delete;
  TRdBars& operator=(const TRdBars&) = delete;

  // The two of an axis exclude one another: setting one clears the other.
  [[nodiscard]] bool ShowVertScroll() const { return FVert.Own; }
  void SetShowVertScroll(bool show) { Choose(FVert, show, FVert.Skinned && !show); }
  [[nodiscard]] bool ShowHorzScroll() const { return FHorz.Own; }
  void SetShowHorzScroll(bool show) { Choose(FHorz, show, FHorz.Skinned && !show); }
  [[nodiscard]] bool ShowCustomVertScroll() const { return FVert.Skinned; }
  void SetShowCustomVertScroll(bool show) { Choose(FVert, FVert.Own && !show, show); }
  [[nodiscard]] bool ShowCustomHorzScroll() const { return FHorz.Skinned; }
  void SetShowCustomHorzScroll(bool show) { Choose(FHorz, FHorz.Own && !show, show); }

  [[nodiscard]] TRdScrollBar& VertBar() { return *FVert.Bar; }
  [[nodiscard]] TRdScrollBar& HorzBar() { return *FHorz.Bar; }

  // The room that the skinned bars take beside the rows.
  [[nodiscard]] QMargins Margins() const;
  // Copies the host's ranges and positions and puts the bars in their place.
  void Mirror();
  // One notch, up for a direction below 0: 3 rows, or sideways by 2 row heights without a vertical bar. False
  // if neither shows or nothing moved.
  bool Wheel(int direction);

 private:
  struct TAxis {
    TRdScrollBar* Bar = nullptr;  // owned as a child window
    bool Own = true;
    bool Skinned = false;
  };
  void Choose(TAxis& axis, bool own, bool skinned);
  void ApplyPolicies();
  void Moved(const TAxis& axis);
  void Place();
  [[nodiscard]] static bool Shows(const TAxis& axis) { return axis.Skinned && !axis.Bar->isHidden(); }

  TRdListView& FList;
  TAxis FVert;
  TAxis FHorz;
  // What the bars tell meanwhile is what was copied to them, not a move.
  bool FMirroring = false;
};
