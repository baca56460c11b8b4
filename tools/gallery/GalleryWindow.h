// The list's page of the gallery: the list, the switches for its looks, what to try, and what has happened.
#pragma once

#include "GalleryList.h"
#include "GallerySkins.h"

#include <QWidget>

#include <functional>

class QComboBox;
class QPlainTextEdit;
class QVBoxLayout;

class TGalleryWindow : public QWidget {
 public:
  TGalleryWindow();

  // The other pages follow.
  std::function<void(TGallerySkin)> OnSkin;

  [[nodiscard]] TRdListView& List() { return FGallery.List(); }
  void Use(TGallerySkin skin);
  void UseCustomBars(bool custom);

 private:
  void AddSwitches(QVBoxLayout& side);
  void AddCheckList(QVBoxLayout& side);
  void Record();
  void Log(const QString& text);

  TGalleryList FGallery;
  QComboBox* FLooks = nullptr;
  QPlainTextEdit* FLog;
};
