// Opening is watched at the desktop's door: nothing is started.
#include "fixtures/SystemTest.h"
#include "fixtures/UrlTaker.h"
#include "platform/KnownFolders.h"
#include "support/ShellRoutines.h"

TEST(OpenWithShell, ReplacesTheFoldersItKnowsByTheirExactNames) {
  TUrlTaker desktop(u"file"_qs);
  for (const QString& target : {u"%APP%/a%APP%\\b"_qs, u"%WINDOWS%a/%SYSTEM%b"_qs, u"/%app%/x"_qs})
    OpenWithShell(target);
  QStringList paths;
  for (const QUrl& url : desktop.Opened)
    paths << url.path();
  EXPECT_EQ(paths,
            QStringList({ProgramFolder() + u'a' + ProgramFolder() + u'b', u"/a//b"_qs, u"/%app%/x"_qs}));
}

TEST(GetFileIconHandle, GoesByTheNameThatIsLeftOfACommandLine) {
  TTempTree themes;
  themes.WriteFile("made/index.theme",
                   "[Icon Theme]\nName=Made\nDirectories=16\n[16]\nSize=16\nType=Fixed\n");
  for (const char* const name : {"application-pdf", "text-plain", "text-x-generic"})
    themes.MakeFile(QByteArray("made/16/") + name + ".png", 0);
  QIcon::setThemeSearchPaths({themes.Path()});
  QIcon::setThemeName(u"made"_qs);
  EXPECT_EQ(GetFileIconHandle(u"/no/such/a.pdf"_qs).name(), u"application-pdf");
  EXPECT_EQ(GetFileIconHandle(u"\"/no such/a.pdf\" -x"_qs).name(), u"application-pdf");
  EXPECT_EQ(GetFileIconHandle(u"/a/b - c.pdf"_qs).name(), u"text-x-generic") << "cut before the extension";
}
