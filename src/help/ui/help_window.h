#pragma once
// The help window `frmHelp`: the manual carried inside the program (the Markdown pages and
// their pictures under ":/manual/"), shown by Qt's text browser, with its contents, a search over
// every page, and the way back and forth.

#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QWidget>
#include <map>
#include <vector>

#include "help/manual.h"

namespace tessel {

// Makes sure the manual and LICENSE are among the program's resources (":/manual/", ":/LICENSE").
void EnsureManualResource();

// The manual's pages as the program carries them, in the manual's order.
std::vector<ManualPage> LoadManual();

// The text browser of the manual: headings carry their anchors, wide pictures are scaled to the
// page.
class ManualBrowser : public QTextBrowser {
  Q_OBJECT

 public:
  explicit ManualBrowser(QWidget* parent = nullptr);
  QVariant loadResource(int type, const QUrl& name) override;

 private:
  void MarkHeadings();
};

class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  explicit HelpWindow(QWidget* parent = nullptr);

  // Opens a page at a section (at its top when the anchor is empty).
  void ShowPlace(const ManualPlace& place);
  // Opens the section of the form of that object name; false, showing the title page, when the
  // manual has none.
  bool ShowForm(const QString& objectName);
  void ShowContents();
  // Lists the sections holding every word and opens the first, its first word selected.
  void Search(const QString& words);
  // Selects the next place of the first searched word in the page shown.
  void FindNext();

  ManualBrowser& browser() { return *browser_; }
  const std::vector<ManualPage>& pages() const { return pages_; }

 private:
  void BuildContents();
  void OpenHit(int row);

  std::vector<ManualPage> pages_;
  std::map<std::string, QString> chapters_;  // page file to its title
  std::vector<ManualHit> hits_;
  QString firstWord_;
  ManualBrowser* browser_ = nullptr;
  QLineEdit* search_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  QTreeWidget* contents_ = nullptr;
  QListWidget* results_ = nullptr;
};

}  // namespace tessel
