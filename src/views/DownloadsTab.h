// The Download Directory tab: the files found in the download folders of known applications, each with a
// check box, and one in the header for all. Main thread.
#pragma once

#include <QObject>

#include "views/ResultTab.h"

class QCheckBox;
class QWidget;
class TImageList;
class TRdListView;

// Made on its panel, which owns its controls.
class TDownloadsTab : public QObject, public TResultTab {
 public:
  // The images outlive the tab.
  TDownloadsTab(TImageList& images, QWidget& panel);

  void FormShow();
  // `growth` is the form's width less its width at creation, in pixels.
  void FormResize(int growth);

 private:
  void BuildList(TImageList& images, QWidget& panel);
  void BuildHeaderBox();
  void CheckRows(bool checked);

  TRdListView* lvDownloadsFile;
  QCheckBox* CheckBox_Downloads;
};
