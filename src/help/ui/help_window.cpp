#include "help/ui/help_window.h"

#include <QDir>
#include <QFile>
#include <QHBoxLayout>
#include <QImage>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBlock>
#include <QTextCursor>
#include <QVBoxLayout>

// The manual's resource is compiled into a static library: naming it keeps it in the program.
// Its initialiser is declared at global scope, so it is called from here.
static void InitManualResource() { Q_INIT_RESOURCE(tessel_manual); }

namespace tessel {

void EnsureManualResource() {
  static const bool done = (InitManualResource(), true);
  (void)done;
}

namespace {

constexpr const char* kManualRoot = ":/manual";
constexpr const char* kTitlePage = "index.md";
// Pictures wider than this are scaled down to it, so that a page needs no sideways scrolling.
constexpr int kPictureWidth = 760;

QString Utf8(const std::string& bytes) { return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size())); }

QUrl PageUrl(const std::string& file, const std::string& anchor) {
  QUrl url(QStringLiteral("qrc:/manual/") + Utf8(file));
  if (!anchor.empty()) url.setFragment(Utf8(anchor));
  return url;
}

QPushButton* Button(QWidget* parent, const char* name, const QString& caption) {
  auto* button = new QPushButton(caption, parent);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  return button;
}

}  // namespace

std::vector<ManualPage> LoadManual() {
  EnsureManualResource();
  std::vector<ManualPage> pages;
  const QDir root(QString::fromLatin1(kManualRoot));
  for (const QString& name : root.entryList({QStringLiteral("*.md")}, QDir::Files, QDir::Name)) {
    QFile file(root.filePath(name));
    if (!file.open(QIODevice::ReadOnly)) continue;
    const QByteArray text = file.readAll();
    pages.push_back({name.toStdString(), text.toStdString()});
  }
  return InManualOrder(std::move(pages), kTitlePage);
}

ManualBrowser::ManualBrowser(QWidget* parent) : QTextBrowser(parent) {
  setObjectName(QStringLiteral("txtManual"));
  setOpenExternalLinks(true);
  // A page is marked when it is shown, whether by a link, by Back or by the program; the
  // section asked for is then found again.
  connect(this, &QTextBrowser::sourceChanged, this, [this](const QUrl& url) {
    MarkHeadings();
    if (url.hasFragment()) scrollToAnchor(url.fragment());
  });
}

QVariant ManualBrowser::loadResource(int type, const QUrl& name) {
  QVariant loaded = QTextBrowser::loadResource(type, name);
  if (type != QTextDocument::ImageResource || loaded.userType() != QMetaType::QByteArray) return loaded;
  QImage picture;
  if (!picture.loadFromData(loaded.toByteArray())) return loaded;
  if (picture.width() > kPictureWidth) picture = picture.scaledToWidth(kPictureWidth, Qt::SmoothTransformation);
  return picture;
}

void ManualBrowser::MarkHeadings() {
  AnchorMaker anchors;
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    if (block.blockFormat().headingLevel() == 0) continue;
    const QString anchor = QString::fromStdString(anchors.Next(block.text().toUtf8().toStdString()));
    QTextCursor cursor(block);
    cursor.setPosition(block.position() + std::max(0, block.length() - 1), QTextCursor::KeepAnchor);
    QTextCharFormat format;
    format.setAnchor(true);
    format.setAnchorNames({anchor});
    cursor.mergeCharFormat(format);
  }
}

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName(QStringLiteral("frmHelp"));
  setWindowTitle(QStringLiteral("Tessel Help"));
  pages_ = LoadManual();

  auto* layout = new QVBoxLayout(this);
  auto* bar = new QHBoxLayout;
  QPushButton* back = Button(this, "cmdBack", QStringLiteral("Back"));
  QPushButton* forward = Button(this, "cmdForward", QStringLiteral("Forward"));
  QPushButton* home = Button(this, "cmdContents", QStringLiteral("Contents"));
  search_ = new QLineEdit(this);
  search_->setObjectName(QStringLiteral("txtSearch"));
  search_->setPlaceholderText(QStringLiteral("Search the manual"));
  search_->setClearButtonEnabled(true);
  QPushButton* find = Button(this, "cmdSearch", QStringLiteral("Search"));
  QPushButton* next = Button(this, "cmdFindNext", QStringLiteral("Find Next"));
  for (QWidget* w : std::initializer_list<QWidget*>{back, forward, home}) bar->addWidget(w);
  bar->addSpacing(12);
  bar->addWidget(search_, 1);
  bar->addWidget(find);
  bar->addWidget(next);
  layout->addLayout(bar);

  auto* split = new QSplitter(this);
  tabs_ = new QTabWidget(split);
  tabs_->setObjectName(QStringLiteral("tabNavigation"));
  contents_ = new QTreeWidget(tabs_);
  contents_->setObjectName(QStringLiteral("tvwContents"));
  contents_->setHeaderHidden(true);
  results_ = new QListWidget(tabs_);
  results_->setObjectName(QStringLiteral("lstResults"));
  tabs_->addTab(contents_, QStringLiteral("Contents"));
  tabs_->addTab(results_, QStringLiteral("Search"));
  browser_ = new ManualBrowser(split);
  split->addWidget(tabs_);
  split->addWidget(browser_);
  split->setStretchFactor(1, 3);
  split->setSizes({240, 720});
  layout->addWidget(split, 1);
  BuildContents();

  connect(back, &QPushButton::clicked, browser_, &QTextBrowser::backward);
  connect(forward, &QPushButton::clicked, browser_, &QTextBrowser::forward);
  connect(browser_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
  connect(browser_, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
  back->setEnabled(false);
  forward->setEnabled(false);
  connect(home, &QPushButton::clicked, this, &HelpWindow::ShowContents);
  connect(search_, &QLineEdit::returnPressed, this, [this] { Search(search_->text()); });
  connect(find, &QPushButton::clicked, this, [this] { Search(search_->text()); });
  connect(next, &QPushButton::clicked, this, &HelpWindow::FindNext);
  connect(contents_, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
    ShowPlace({item->data(0, Qt::UserRole).toString().toStdString(),
               item->data(0, Qt::UserRole + 1).toString().toStdString(), ""});
  });
  connect(contents_, &QTreeWidget::itemClicked, contents_, &QTreeWidget::itemActivated);
  connect(results_, &QListWidget::currentRowChanged, this, &HelpWindow::OpenHit);
  resize(1000, 720);
  ShowContents();
}

void HelpWindow::BuildContents() {
  for (const ManualPage& page : pages_) {
    QTreeWidgetItem* chapter = nullptr;
    for (const ManualHeading& heading : ManualHeadings(page.text)) {
      if (heading.level > 2) continue;
      auto* item = chapter && heading.level == 2 ? new QTreeWidgetItem(chapter) : new QTreeWidgetItem(contents_);
      if (!chapter || heading.level == 1) chapter = item;
      if (heading.level == 1 && !chapters_.count(page.file)) chapters_[page.file] = Utf8(heading.title);
      item->setText(0, Utf8(heading.title).remove(QLatin1Char('`')));
      item->setData(0, Qt::UserRole, Utf8(page.file));
      item->setData(0, Qt::UserRole + 1, heading.level == 1 ? QString() : Utf8(heading.anchor));
    }
  }
}

void HelpWindow::ShowPlace(const ManualPlace& place) {
  const QUrl url = PageUrl(place.file, place.anchor);
  browser_->setSource(url);
  // The same page again: the browser only scrolls when the anchor is new to it.
  if (url.hasFragment()) browser_->scrollToAnchor(url.fragment());
}

bool HelpWindow::ShowForm(const QString& objectName) {
  if (auto place = FindFormSection(pages_, objectName.toStdString())) {
    ShowPlace(*place);
    return true;
  }
  ShowContents();
  return false;
}

void HelpWindow::ShowContents() { ShowPlace({kTitlePage, "", ""}); }

void HelpWindow::Search(const QString& words) {
  search_->setText(words);
  hits_ = SearchManual(pages_, words.toStdString());
  firstWord_ = words.simplified().section(QLatin1Char(' '), 0, 0);
  const QSignalBlocker quiet(results_);
  results_->clear();
  for (const ManualHit& hit : hits_) {
    // "Chapter: section (count)", the chapter alone for its own first section.
    QString title = Utf8(hit.place.title).remove(QLatin1Char('`'));
    const QString chapter = chapters_.count(hit.place.file) ? chapters_[hit.place.file] : QString();
    if (!chapter.isEmpty() && chapter != title) title = chapter + QStringLiteral(": ") + title;
    results_->addItem(QStringLiteral("%1  (%2)").arg(title).arg(hit.count));
  }
  if (hits_.empty() && !words.trimmed().isEmpty()) results_->addItem(QStringLiteral("Nothing found"));
  tabs_->setCurrentWidget(results_);
  if (!hits_.empty()) {
    results_->setCurrentRow(0);
    OpenHit(0);
  }
}

void HelpWindow::OpenHit(int row) {
  if (row < 0 || row >= static_cast<int>(hits_.size())) return;
  const ManualPlace& place = hits_[static_cast<std::size_t>(row)].place;
  ShowPlace(place);
  // From the section's heading on.
  QTextCursor start(browser_->document());
  for (QTextBlock block = browser_->document()->begin(); block.isValid(); block = block.next()) {
    const QTextCharFormat format = block.begin().atEnd() ? QTextCharFormat() : block.begin().fragment().charFormat();
    if (!place.anchor.empty() && format.anchorNames().contains(Utf8(place.anchor))) {
      start.setPosition(block.position());
      break;
    }
  }
  browser_->setTextCursor(start);
  FindNext();
}

void HelpWindow::FindNext() {
  if (firstWord_.isEmpty()) return;
  if (!browser_->find(firstWord_)) {
    // Round again from the top of the page.
    browser_->moveCursor(QTextCursor::Start);
    browser_->find(firstWord_);
  }
}

}  // namespace tessel
