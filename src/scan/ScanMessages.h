// The numbered messages of a scan, posted by the scan thread to the window that started it.
//
//   WM_SCANBEGIN     the window to itself: paths are waiting, begin the analysis
//   WM_SCANDONE      the scan ended by itself; its results are sorted and may be read
//   WM_SCANSTATUS    WPARAM 0: LPARAM is the row that the scan has moved to (its path's index, or the number
//                    of paths for the download pass); 2: LPARAM is the address of a TPathText of the
//                    sender, to be read at once; 1: LPARAM is a position for the bar
//   WM_SCANPROGRESS  WPARAM not 0: a step begins, see ScanStepWord; 0: LPARAM is the phase value within it
//   WM_SCANSTOPPED   the scan ended because of a stop request
#pragma once

#include <QtGlobal>

inline constexpr unsigned WM_SCANBEGIN = 8045;
inline constexpr unsigned WM_SCANDONE = 8046;
inline constexpr unsigned WM_SCANSTATUS = 8047;
inline constexpr unsigned WM_SCANPROGRESS = 8048;
inline constexpr unsigned WM_SCANSTOPPED = 8049;

// The kinds of WM_SCANSTATUS, in WPARAM.
inline constexpr quintptr kScanStatusRow = 0;
inline constexpr quintptr kScanStatusBar = 1;
inline constexpr quintptr kScanStatusPath = 2;

// The phase values within one step of 300 units: 1 to 99 walking, then files, then folders taken over.
inline constexpr int kPhaseFiles = 100;
inline constexpr int kPhaseFolders = 200;
inline constexpr int kPhaseDone = 300;

// The word that begins a step: the number of all steps in its high half, this step's in its low half.
[[nodiscard]] constexpr quintptr ScanStepWord(int total, int current) {
  return (static_cast<quint32>(total) & 0xFFFF) << 16 | (static_cast<quint32>(current) & 0xFFFF);
}
[[nodiscard]] constexpr int ScanStepTotal(quintptr word) {
  return static_cast<int>(word >> 16 & 0xFFFF);
}
[[nodiscard]] constexpr int ScanStepCurrent(quintptr word) {
  return static_cast<int>(word & 0xFFFF);
}
