#include "GalleryList.h"

namespace {

struct TColumnRow {
  const char* Caption;
  int Width;
  TListColumnType Type;
  TAlignment Alignment = TAlignment::LeftJustify;
};
constexpr TColumnRow kColumns[] = {
    {"Application", 230, ltIconCaption},
    {"Action", 118, ltButton},
    {"Site", 110, ltLabel},
    {"Progress", 130, ltProgress},
    {"Rating", 150, ltStar},
    {"Note", 150, ltEdit},
    {"Schedule", 130, ltComboBox},
    {"On", 46, ltCheckbox},
    {"Size", 90, ltNone, TAlignment::RightJustify},
};

struct TApplicationRow {
  int Group;
  const char* Icon;
  const char* Name;
  const char* About;
  const char* Action;
  const char* Site;
  const char* Progress;
  const char* Rating;
  const char* Note;
  const char* Schedule;
  bool On;
  const char* Size;
};
constexpr TApplicationRow kRows[] = {
    {0, "file_image32", "Picture Album", "Photos by day and place", "Update", "Release notes", "72", "4.5",
     "Keep the originals", "Weekly", true, "184 MB"},
    {0, "file_audio32", "Recorder", "Sound and speech", "Update", "Release notes", "35", "3.6", "", "Daily",
     false, "22 MB"},
    {0, "file_video32", "Film Cutter", "Cuts without a loss", "Install", "Web page", "0", "5", "Needs 4 GB",
     "Never", false, "412 MB"},
    {1, "file_sheet32", "Tables", "Figures and charts", "Update", "Release notes", "100", "4", "", "Weekly",
     true, "96 MB"},
    {1, "file_text32", "Letter Writer", "Texts with and without form", "Remove", "Web page", "58", "2.5",
     "Shared with the office", "Monthly", true, "118 MB"},
    {1, "file_pdf32", "Page Reader", "Documents on one page or two", "Update", "Web page", "12", "3", "",
     "Never", false, "41 MB"},
    {2, "file_database32", "Archive", "Many files in one", "Install", "Release notes", "0", "1.5", "",
     "Daily", false, "7 MB"},
    {2, "file_program32", "Terminal", "For those who type", "Update", "Web page", "90", "4.8", "", "Weekly",
     true, "15 MB"},
    {2, "file_script32", "Night Jobs", "Runs while you sleep", "Remove", "Web page", "64", "3.2",
     "Runs at 3 o'clock", "Daily", false, "3 MB"},
};
constexpr int kDisabledRow = 6;

QString Text(const char* text) {
  return QString::fromUtf8(text);
}

}  // namespace

TGalleryList::TGalleryList(QWidget* parent) : FList(parent) {
  FList.setObjectName(u"GalleryList"_qs);
  FList.setAccessibleName(u"Applications"_qs);
  for (const char* const name : {"tab_overview16", "tab_contents16", "analyze16"})
    FGroupIcons.Add(TPicture::FromResource(Text(name)));
  FArrows.Add(TPicture::FromResource(u"sort_asc"_qs));
  FArrows.Add(TPicture::FromResource(u"sort_desc"_qs));
  FList.SetOptions({.MultiSelect = true, .CheckBoxes = true});
  TRdListProperties properties;
  properties.CheckBoxOnColumnHeader = true;
  properties.SortImage = &FArrows;
  properties.IconImgList = &FIcons;
  properties.GroupImages = &FGroupIcons;
  FList.SetProperties(properties);
  FList.AllSkinItem().ItemHeight = 46;
  FList.AllSkinItem().EditHeight = 24;
  FList.AllSkinItem().LabelLineHeight = 2;
  FList.AllSkinItem().LabelHoverUnderline = true;
  FList.AllSkinItem().StarCaption = u"Rate"_qs;
  FList.SetOpenOwnerDraw(true);
  FList.SetOpenGroupDraw(true);
  AddColumns();
  AddGroups();
  AddRows();
}

void TGalleryList::AddColumns() {
  for (const TColumnRow& row : kColumns) {
    TkListColumn& column = FList.Columns().Add();
    column.SetCaption(Text(row.Caption));
    column.SetWidth(row.Width);
    column.SetColumnType(row.Type);
    column.SetAlignment(row.Alignment);
  }
  FList.Columns()[kNameColumn].SetMinWidth(120);
  FList.Columns()[kEditColumn].SetMinWidth(120);
  FList.Columns()[kEditColumn].SetAutoSize(true);
  FList.Columns()[kCheckColumn].SetFixedWidth(true);
  FList.Columns()[kButtonColumn].AutoClickSort = false;
  FList.Columns()[kComboColumn].ComboBoxItems = {u"Never"_qs, u"Daily"_qs, u"Weekly"_qs, u"Monthly"_qs};
}

void TGalleryList::AddGroups() {
  int image = 0;
  for (const char* const header : {"Media", "Office", "Tools"}) {
    TkListGroup& group = FList.Groups().Add(Text(header));
    group.SetTitleImage(image++);
  }
}

void TGalleryList::AddRows() {
  const TListUpdate update(FList.Items());
  for (const TApplicationRow& row : kRows) {
    TkListItem* const item = FList.Items().Add(row.Group);
    item->SetCaption(Text(row.Name) + u"\r\r"_qs + Text(row.About));
    item->SetImageIndex(FIcons.Add(TPicture::FromResource(Text(row.Icon))));
    for (const char* const text : {row.Action, row.Site, row.Progress, row.Rating, row.Note, row.Schedule,
                                   row.On ? "1" : "", row.Size})
      item->SubItems().Add(Text(text));
    item->SetChecked(row.On);
    item->SetEnabled(&row != &kRows[kDisabledRow]);
  }
}
