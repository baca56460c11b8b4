// The Contents tab: the folders of the computer, one at a time, with a size on every row. This file joins the
// list, the combo above it, the fill of their rows, the sort and the history, and tells the status bar of
// them. Main thread.
//
// Who tells whom: going somewhere is TNavigation, which moves the list; the list tells OnPathChanged (the
// fill begins), OnFillItem per row (cells), OnFolderChanged (the fill ends), OnRefreshed (the disk has
// changed) and OnDeletion (cells are freed). A size that comes later goes from the thread to the fill and
// back here by OnSized. What the status bar shows is either the folder or drive shown (Subject) or the
// selected row (ShowRow).
#pragma once

#include <QObject>

#include "support/TWorkerThread.h"
#include "views/contents/ContentsFill.h"
#include "views/contents/ContentsSort.h"
#include "views/contents/Navigation.h"
#include "views/files/FileOperations.h"
#include "views/files/FileRows.h"
#include "views/main/ResultTab.h"

class TContentsTab : public QObject, public TResultTab {
 public:
  TContentsTab(const TTabParts& parts, QWidget& panel);
  ~TContentsTab() override;

  void FormShow() override {}
  void FormResize(int) override {}
  void FitColumns() override {}  // the first look does
  void FormActivate() override;
  void FormClose() override;
  // The computer level, without a history.
  void Reset() override;
  // The folders that lead a result go into the sizes; the tab shows the result when it is next activated.
  void Fill(const TTallyscopeScan& scan, const QStringList& targets) override;

  void Activate() override;
  [[nodiscard]] int RowCount() const override;
  // The folder or drive shown, or the computer.
  [[nodiscard]] TSubject Subject() const override;
  [[nodiscard]] bool CanGoUp() const override;

  // A folder is gone to, a file is opened.
  void Open() override;
  void OpenFileFolder() override { FFileOperations.OpenFileFolder(); }
  void ShowProperties() override { FFileOperations.ShowProperties(); }
  void DeleteRows() override { FFileOperations.Delete(); }
  void MoveRows() override { FFileOperations.Move(); }
  void SelectAll() override;
  void DeselectAll() override;
  void InvertSelection() override;

  // Sizes and count of the folder shown once more, after rows have gone.
  void FillAgain();

  [[nodiscard]] TContentsFill& Rows() { return FFill; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildList();
  void HoldTypes(const TRzShellTexts& texts);
  void BuildCombo();
  void WireNavigation();
  void FitColumnsOnce();
  [[nodiscard]] QString Text(const QString& key, const QString& defaultText) const;

  [[nodiscard]] bool OnTop() const;
  [[nodiscard]] int PictureOf(const QString& path) const;
  void ShellListContentPathChanged();
  void ShellListContentFolderChanged();
  void ShellListContentSelectItem(TListItem& item, bool selected);
  void ShowRow(TListItem& item);
  void LookAtFolder(const QString& path);
  void FolderLookedAt(const QString& path, bool found);
  [[nodiscard]] std::optional<QString> SizeLineOf(const TListItem& item) const;
  void ShellListContentClick();
  void ShellListContentDblClick();
  template <typename TMark>
  void MarkRows(const TMark& mark);
  void ShowCount();

  TTabParts FParts;
  QWidget& FPanel;
  TRzShellCombo* RzShellCombo1;
  TRzShellList* ShellListContent;
  // Each holds references to those above it. The list is deleted first of all (the destructor), while these
  // can still free what hangs on its rows.
  TContentsFill FFill;
  TContentsSort FSort;
  TNavigation FNavigation;
  TShellFileRows FFileRows;
  TFileOperations FFileOperations;
  TDetachedTask FLook;  // whether the folder of the selected row is there still
  bool FLooking = false;
  bool FContentsPending = false;  // a result is there that the tab has not shown
  bool FFitted = false;           // the columns have been given the width of the window
  bool FMarking = false;          // a command changes the check marks
};
