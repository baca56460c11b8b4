// The header above the Overview's list: picture, name, kind, sizes and counts of the present subject. Main
// thread.
#pragma once

#include <QWidget>

class QGridLayout;
class QLabel;
class TImage;
class TImageNote;

class TOverviewHeader : public QWidget {
 public:
  // The picture store outlives the header.
  TOverviewHeader(const TImageNote& pictures, QWidget* parent);

  void SetPicture(int storeIndex);
  void SetName(const QString& name);

  // A null text hides the line.
  void SetType(const QString& type);
  void SetSize(const QString& size);
  void SetUsed(const QString& used);

  void SetCounts(quint32 files, quint32 folders);
  void HideCounts();

 private:
  [[nodiscard]] QLabel* AddLabel(const QString& name, const QString& caption);
  void AddPair(int column, int row, QLabel*& caption, QLabel*& value, const QString& captionName,
               const QString& captionText, const QString& valueName);
  static void ShowPair(QLabel* caption, QLabel* value, bool show);

  const TImageNote& ImageNote1;
  QGridLayout* FGrid = nullptr;
  TImage* imgType;
  QLabel* lblName;
  QLabel* lblType;
  QLabel* lblStcSize;
  QLabel* lblSize;
  QLabel* lblstcUsed;
  QLabel* lblUsed;
  QLabel* lblStcFiles;
  QLabel* lblFiles;
  QLabel* lblStcFolders;
  QLabel* lblFolders;
};
