// Help on the offscreen platform: every form of the program has its section in the manual (the
// forms are found in the sources and in the running window, so forms added later are checked
// too), the manual's links and pictures resolve inside the program, F1 opens the section of the
// form in use (modal dialogs included), the search, Help > Contents and Help > About.

#include <set>

#include "help/ui/help_forms.h"
#include "help/ui/help_window.h"
#include "job/ui/config_dialog.h"
#include "form_test_support.h"

namespace tessel {
namespace {

// Every object name of a form in the sources of the form libraries and the desktop: the
// QString literals that begin with "frm" in src/**/ui/ and src/app/. A form's name may also be a
// constant of its subsystem's headless code, in any header, which the form takes.
std::set<QString> FormNamesInSources() {
  std::set<QString> names;
  const QRegularExpression literal(
      QStringLiteral(R"((?:QStringLiteral|QString::fromLatin1|QLatin1String|QString)\(\s*"(frm[A-Za-z0-9_]+)\"\s*\))"));
  const QRegularExpression constant(QStringLiteral(R"re(constexpr const char\*\s+k\w*Form\w*\s*=\s*"(frm[A-Za-z0-9_]+)")re"));
  QDirIterator it(QStringLiteral(TESSEL_SOURCE_DIR "/src"), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                  QDir::Files, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QString path = it.next();
    const QString text = QString::fromUtf8(Bytes(path));
    if (path.contains(QStringLiteral("/ui/")) || path.contains(QStringLiteral("/src/app/"))) {
      for (auto match = literal.globalMatch(text); match.hasNext();) names.insert(match.next().captured(1));
    }
    if (!path.endsWith(QStringLiteral(".h"))) continue;
    for (auto match = constant.globalMatch(text); match.hasNext();) names.insert(match.next().captured(1));
  }
  return names;
}

// The forms standing once the main window is built: every widget named "frm..." and every
// named window.
std::set<QString> FormNamesRunning() {
  std::set<QString> names;
  for (QWidget* w : QApplication::allWidgets()) {
    const QString name = w->objectName();
    if (name.startsWith(QStringLiteral("frm")) || (w->isWindow() && !name.isEmpty() && !qobject_cast<QMenu*>(w))) {
      names.insert(name);
    }
  }
  return names;
}

}  // namespace

class HelpTest : public QObject, WindowBench {
  Q_OBJECT

 private:
  HelpController& Controller() { return *W().findChild<HelpController*>(QStringLiteral("HelpController")); }
  HelpWindow& Help() {
    HelpWindow* help = Controller().window();
    Q_ASSERT(help);
    return *help;
  }
  QString Page() { return Help().browser().source().fileName(); }
  QString Fragment() { return Help().browser().source().fragment(); }
  // The section's heading stands at the top of the view, or the page is scrolled to its end.
  bool HeadingOnTop(const QString& anchor) {
    ManualBrowser& b = Help().browser();
    for (QTextBlock block = b.document()->begin(); block.isValid(); block = block.next()) {
      if (block.blockFormat().headingLevel() == 0 || block.begin().atEnd()) continue;
      if (!block.begin().fragment().charFormat().anchorNames().contains(anchor)) continue;
      const int top = int(b.document()->documentLayout()->blockBoundingRect(block).top());
      const int wanted = std::min(top, b.verticalScrollBar()->maximum());
      return std::abs(b.verticalScrollBar()->value() - wanted) <= 1;
    }
    return false;
  }
  void ExpectSection(const QString& form) {
    const auto place = FindFormSection(LoadManual(), form.toStdString());
    QVERIFY2(place, qPrintable(form));
    QVERIFY(Help().isVisible());
    QCOMPARE(Page(), QString::fromStdString(place->file));
    QCOMPARE(Fragment(), QString::fromStdString(place->anchor));
    QVERIFY2(HeadingOnTop(Fragment()), qPrintable(form));
  }

 private slots:
  void init() {
    MakeFolders(false);
    StartWindow();
  }
  void cleanup() { StopWindow(); }

  void everyFormHasAManualSectionAndItsLinksResolve() {
    const std::set<QString> scanned = FormNamesInSources();
    const std::set<QString> running = FormNamesRunning();
    // The scan sees the forms of every library, and every form standing in the window.
    QVERIFY2(scanned.size() >= 30, qPrintable(QString::number(scanned.size())));
    QStringList unseen;
    for (const QString& name : running) {
      if (name.startsWith(QStringLiteral("frm")) && !scanned.count(name)) unseen << name;
    }
    QVERIFY2(unseen.isEmpty(), qPrintable(unseen.join(QStringLiteral(", "))));
    QVERIFY(running.count(QStringLiteral("View")));

    std::set<QString> forms = scanned;
    forms.insert(running.begin(), running.end());
    const std::vector<ManualPage> manual = LoadManual();
    QStringList missing;
    for (const QString& name : forms) {
      if (!FindFormSection(manual, name.toStdString())) missing << name;
    }
    QVERIFY2(missing.isEmpty(), qPrintable(QStringLiteral("no manual section names ") + missing.join(QStringLiteral(", "))));
    const std::vector<std::string> twice = NamesInSeveralHeadings(manual);
    QVERIFY2(twice.empty(), twice.empty() ? "" : twice.front().c_str());

    // The manual's links and pictures resolve inside the program.
    QVERIFY(manual.size() >= 10);
    QCOMPARE(QString::fromStdString(manual.front().file), QStringLiteral("index.md"));
    const std::vector<std::string> broken = BrokenReferences(manual, [](const std::string& file) {
      return !QImage(QStringLiteral(":/manual/") + QString::fromStdString(file)).isNull();
    });
    QStringList shown;
    for (const auto& b : broken) shown << QString::fromStdString(b);
    QVERIFY2(broken.empty(), qPrintable(shown.join(QStringLiteral("\n"))));
    // The program carries the manual's folder as it stands.
    for (const auto& [folder, glob] : {std::pair{"", "*.md"}, std::pair{"/images", "*.png"}}) {
      QCOMPARE(QDir(QStringLiteral(":/manual") + folder).entryList({glob}, QDir::Files),
               QDir(QStringLiteral(TESSEL_SOURCE_DIR "/docs/manual") + folder).entryList({glob}, QDir::Files));
    }
  }

  void contentsLinksBackAndPictures() {
    // Help ends the menu bar.
    QCOMPARE(W().menuBar()->actions().last()->menu()->objectName(), QStringLiteral("mnuHelp"));
    Action("mnuHelpContents")->trigger();
    QVERIFY(Help().isVisible());
    QCOMPARE(Page(), QStringLiteral("index.md"));
    QCOMPARE(Help().findChild<QTreeWidget*>(QStringLiteral("tvwContents"))->topLevelItemCount(),
             int(Help().pages().size()));

    // A click on the link to the canvas chapter opens it; Back returns.
    ManualBrowser& b = Help().browser();
    int at = -1;
    for (QTextBlock block = b.document()->begin(); block.isValid() && at < 0; block = block.next()) {
      for (auto f = block.begin(); !f.atEnd(); ++f) {
        if (f.fragment().charFormat().anchorHref() == QStringLiteral("viewer.md")) at = f.fragment().position() + 1;
      }
    }
    QVERIFY(at > 0);
    QTextCursor cursor(b.document());
    cursor.setPosition(at);
    QTest::mouseClick(b.viewport(), Qt::LeftButton, Qt::NoModifier, b.cursorRect(cursor).center());
    QCOMPARE(Page(), QStringLiteral("viewer.md"));
    QVERIFY(b.document()->toPlainText().contains(QStringLiteral("Zooming and panning")));
    Help().findChild<QPushButton*>(QStringLiteral("cmdBack"))->click();
    QCOMPARE(Page(), QStringLiteral("index.md"));

    // A page's picture is found inside the program and fitted to the page.
    const QVariant picture =
        b.loadResource(QTextDocument::ImageResource, QUrl(QStringLiteral("qrc:/manual/images/main-window.png")));
    QCOMPARE(picture.userType(), int(QMetaType::QImage));
    QVERIFY(!picture.value<QImage>().isNull() && picture.value<QImage>().width() <= 760);

    // A section chosen in the contents opens at its heading.
    QTreeWidget* tree = Help().findChild<QTreeWidget*>(QStringLiteral("tvwContents"));
    QTreeWidgetItem* chapter = tree->topLevelItem(3);
    QVERIFY(chapter && chapter->childCount() > 2);
    QTreeWidgetItem* section = chapter->child(chapter->childCount() - 1);
    emit tree->itemActivated(section, 0);
    QCOMPARE(Page(), section->data(0, Qt::UserRole).toString());
    QCOMPARE(Fragment(), section->data(0, Qt::UserRole + 1).toString());
    QVERIFY(HeadingOnTop(Fragment()));
  }

  void f1OpensTheSectionOfTheFormInUse() {
    // The main window, from its canvas.
    W().canvas().setFocus();
    QTest::keyClick(&W().canvas(), Qt::Key_F1);
    ExpectSection(QStringLiteral("View"));
    HelpWindow* first = Controller().window();

    // A field deep inside a form that is not modal: the form's own section.
    ConfigDialog config(W().session(), &W());
    config.show();
    QLineEdit* field = config.findChild<QLineEdit*>();
    QVERIFY(field);
    QTest::keyClick(field, Qt::Key_F1);
    ExpectSection(QStringLiteral("frmConfig"));
    QCOMPARE(Controller().window(), first);
    config.close();

    // F1 in the help window tells how to use it.
    QTest::keyClick(&Help().browser(), Qt::Key_F1);
    ExpectSection(QStringLiteral("frmHelp"));

    // With a modifier F1 is not help.
    Help().ShowContents();
    QTest::keyClick(&W().canvas(), Qt::Key_F1, Qt::ShiftModifier);
    QCOMPARE(Page(), QStringLiteral("index.md"));

    // A window the manual does not know: the title page.
    QWidget loose;
    loose.show();
    QTest::keyClick(&loose, Qt::Key_F1);
    QCOMPARE(Page(), QStringLiteral("index.md"));
  }

  void f1InAModalDialogOpensHelpBesideIt() {
    bool checked = false;
    QTimer::singleShot(0, this, [this, &checked] {
      QWidget* modal = QApplication::activeModalWidget();
      QVERIFY(modal);
      QCOMPARE(modal->objectName(), QStringLiteral("frmConfig"));
      QTest::keyClick(modal->findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::Key_F1);
      ExpectSection(QStringLiteral("frmConfig"));
      // The help window belongs to the dialog, so the dialog does not shut it off.
      QCOMPARE(Help().parentWidget(), modal);
      QVERIFY(Help().isWindow());
      checked = true;
      static_cast<QDialog*>(modal)->reject();
    });
    // A dialog that needs no job: the saved views' dialog lives with an open job.
    Action("mnuFileConfig")->trigger();
    QVERIFY(checked);
    // The dialog took its help window with it; F1 then opens a new one over the main window.
    QVERIFY(!Controller().window());
    QTest::keyClick(&W().canvas(), Qt::Key_F1);
    QCOMPARE(Help().parentWidget(), &W());
    ExpectSection(QStringLiteral("View"));
  }

  void searchFindsEveryWordAcrossPages() {
    Action("mnuHelpSearch")->trigger();
    QLineEdit* field = Help().findChild<QLineEdit*>(QStringLiteral("txtSearch"));
    QListWidget* results = Help().findChild<QListWidget*>(QStringLiteral("lstResults"));
    QTest::keyClicks(field, QStringLiteral("SPLITPLAN"));
    QTest::keyClick(field, Qt::Key_Return);
    const std::vector<ManualHit> hits = SearchManual(Help().pages(), "splitplan");
    QVERIFY(hits.size() > 3);
    QCOMPARE(results->count(), int(hits.size()));
    QCOMPARE(Page(), QString::fromStdString(hits[0].place.file));
    QCOMPARE(Help().browser().textCursor().selectedText().toLower(), QStringLiteral("splitplan"));
    // Another section of the list, and the next place on its page.
    results->setCurrentRow(2);
    QCOMPARE(Page(), QString::fromStdString(hits[2].place.file));
    QCOMPARE(Fragment(), QString::fromStdString(hits[2].place.anchor));
    const int first = Help().browser().textCursor().position();
    QCOMPARE(Help().browser().textCursor().selectedText().toLower(), QStringLiteral("splitplan"));
    Help().findChild<QPushButton*>(QStringLiteral("cmdFindNext"))->click();
    QVERIFY(Help().browser().textCursor().position() != first);
    QCOMPARE(Help().browser().textCursor().selectedText().toLower(), QStringLiteral("splitplan"));

    field->clear();
    QTest::keyClicks(field, QStringLiteral("splitplan qqqzzz"));
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(results->count(), 1);
    QCOMPARE(results->item(0)->text(), QStringLiteral("Nothing found"));
  }

  void aboutShowsVersionQtAndLicence() {
    QStringList texts;
    QTimer::singleShot(0, this, [&texts] {
      QWidget* modal = QApplication::activeModalWidget();
      if (!modal || modal->objectName() != QStringLiteral("frmAbout")) return;
      for (const char* name : {"lblVersion", "lblQt", "lblLicence"}) {
        if (auto* label = modal->findChild<QLabel*>(QString::fromLatin1(name))) texts << label->text();
      }
      static_cast<QDialog*>(modal)->accept();
    });
    Action("mnuHelpAbout")->trigger();
    QCOMPARE(texts.size(), 3);
    QCOMPARE(texts[0], QStringLiteral("Version " TESSEL_VERSION));
    QVERIFY(texts[1].contains(QStringLiteral(QT_VERSION_STR)));
    QCOMPARE(texts[2], QStringLiteral("Licence: MIT License"));
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::HelpTest)
#include "help_test.moc"
