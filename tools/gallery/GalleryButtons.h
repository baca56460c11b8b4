// The gallery's pages of image buttons and of fold panels. Main thread.
#pragma once

#include "GallerySkins.h"

#include <QWidget>

#include <vector>

class TCustomImageButton;
class TRdFoldPanel;
class TRdImageButton;
class TRdImageButtonEx;

class TGalleryButtons : public QWidget {
 public:
  TGalleryButtons();
  void Use(TGallerySkin skin);
  // Shows a button under the mouse and one that is held, for pictures.
  void Pose();

 private:
  std::vector<TRdImageButton*> FButtons;
  std::vector<TRdImageButtonEx*> FSliced;
};

// Panels that stand free, panels in a layout, and panels on a panel.
class TGalleryFolds : public QWidget {
 public:
  TGalleryFolds();
  void Use(TGallerySkin skin);
  // Opens some, for pictures.
  void Pose();

 private:
  TRdFoldPanel& Add(QWidget& parent, const QString& caption, QRect bounds, int height);
  void AddFree();
  void AddInLayout();

  std::vector<TRdFoldPanel*> FPanels;
  QWidget FFree;
  QWidget FColumn;
};
