// frmConfig on the offscreen platform: the fields filled from the settings, Save writing
// Tessel.cfg that the next start reads back, OK changing only the running settings, Restore
// Defaults on Yes and on No, and the "load LXN lines" check that takes effect at once.

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>
#include <string>
#include <vector>

#include "app/config_dialog.h"
#include "core/config.h"
#include "core/config_actions.h"
#include "core/display.h"
#include "core/load_sequence.h"
#include "core/recording_ports.h"
#include "core/session.h"

namespace tessel {
namespace {

class CountingDisplay : public Display {
 public:
  void RefreshViewAfterExtents() override { ++fits; }
  void RefreshView() override { ++refreshes; }
  void ClearCanvas() override {}
  int fits = 0;
  int refreshes = 0;
};

// A session of its own on recording ports, with a temporary tool folder.
struct Bench {
  Bench() {
    session.ToolFolder = tools.path().toStdString();
    session.CurrentFolder = session.ToolFolder;
    session.display = &display;
  }
  QString CfgPath() const { return tools.filePath(QStringLiteral("Tessel.cfg")); }
  bool CfgExists() const { return QFile::exists(CfgPath()); }

  QTemporaryDir tools;
  RecordingUserPort user;
  RecordingCanvas canvas;
  RecordingProcessPort processes;
  CountingDisplay display;
  Session session{user, canvas, processes};
};

template <typename W>
W* Find(QWidget& parent, const QString& name) {
  W* widget = parent.findChild<W*>(name);
  if (!widget) qFatal("no widget %s", qPrintable(name));
  return widget;
}

// A setting of every kind changed from its default.
Config Changed() {
  Config c;
  c.PtSizeCor = 7;
  c.CorColor = 12;
  c.PtSizeCtrl = 3;
  c.CtrlColor = 0;
  c.LineTypeLSA = 2;
  c.LsaColor = 15;
  c.LineTypeLXN = 4;
  c.LxnColor = 6;
  c.PanPercent = 12.5f;
  c.ZoomPercent = 30.0f;
  c.chkLXN = 0;
  c.EditorPath = "/usr/bin/vi";
  c.ToolButton[2] = {"/opt/tools/three", "Three"};
  c.ToolButton[11] = {"/opt/tools/twelve", "Twelve"};
  c.chkLinesLSA = 0;
  c.chkLinesLXN = 1;
  c.chkLinesRAW = 1;
  c.chkRPO = 1;
  c.chkPoints = 0;
  c.chkControl = 0;
  c.chkParcels = 1;
  c.BackgroundMode = 2;
  return c;
}

// Types the settings of Changed() into the fields, as a user would.
void EnterChanged(ConfigDialog& d) {
  Find<QSpinBox>(d, "PtSizeCor")->setValue(7);
  Find<QComboBox>(d, "CorColor")->setCurrentIndex(12);
  Find<QSpinBox>(d, "PtSizeCtrl")->setValue(3);
  Find<QComboBox>(d, "CtrlColor")->setCurrentIndex(0);
  Find<QComboBox>(d, "LineTypeLSA")->setCurrentText(QStringLiteral("2- Dot"));
  Find<QComboBox>(d, "LsaColor")->setCurrentText(QStringLiteral("15 - Bright White"));
  Find<QComboBox>(d, "LineTypeLXN")->setCurrentIndex(4);
  Find<QComboBox>(d, "LxnColor")->setCurrentIndex(6);
  Find<QDoubleSpinBox>(d, "PanPercent")->setValue(12.5);
  Find<QDoubleSpinBox>(d, "ZoomPercent")->setValue(30.0);
  Find<QCheckBox>(d, "chkLXN")->click();
  Find<QLineEdit>(d, "EditorPath")->setText(QStringLiteral("/usr/bin/vi"));
  Find<QLineEdit>(d, "txtPath3")->setText(QStringLiteral("/opt/tools/three"));
  Find<QLineEdit>(d, "txtCaption3")->setText(QStringLiteral("Three"));
  Find<QLineEdit>(d, "txtPath12")->setText(QStringLiteral("/opt/tools/twelve"));
  Find<QLineEdit>(d, "txtCaption12")->setText(QStringLiteral("Twelve"));
  Find<QCheckBox>(d, "chkLinesLSA")->setChecked(false);
  Find<QCheckBox>(d, "chkLinesLXN")->setChecked(true);
  Find<QCheckBox>(d, "chkLinesRAW")->setChecked(true);
  Find<QCheckBox>(d, "chkRPO")->setChecked(true);
  Find<QCheckBox>(d, "chkPoints")->setChecked(false);
  Find<QCheckBox>(d, "chkControl")->setChecked(false);
  Find<QCheckBox>(d, "chkParcels")->setChecked(true);
  Find<QRadioButton>(d, "optBackground2")->setChecked(true);
}

}  // namespace

class ConfigDialogTest : public QObject {
  Q_OBJECT

 private slots:
  void layoutCarriesTheFixedTexts();
  void fieldsAreFilledFromTheSettingsWhenShown();
  void saveWritesTheFileThatTheNextStartReads();
  void okChangesTheSettingsAndWritesNothing();
  void okKeepsValuesTheFieldsCannotShow();
  void eachViewingCheckSetsItsOwnSetting();
  void restoreAnsweredYesDeletesTheFileAndResets();
  void restoreAnsweredNoKeepsEverything();
  void lxnCheckTakesEffectAtOnceAndCancelKeepsIt();
  void browseWritesIntoTheFieldOfItsEntry();
};

void ConfigDialogTest::layoutCarriesTheFixedTexts() {
  Bench b;
  ConfigDialog d(b.session);
  QCOMPARE(d.objectName(), QStringLiteral("frmConfig"));
  QCOMPARE(d.windowTitle(), QStringLiteral("Configuration Options"));

  auto* tabs = d.findChild<QTabWidget*>();
  QVERIFY(tabs);
  QCOMPARE(tabs->count(), 4);
  QCOMPARE(tabs->tabText(1), QStringLiteral("Setup user-defined program buttons # 1-6"));
  QCOMPARE(tabs->tabText(2), QStringLiteral("Setup User Defined program buttons # 7 - 12"));
  QCOMPARE(tabs->tabText(3), QStringLiteral("Default Viewing Setup"));

  for (const char* name : {"CorColor", "CtrlColor", "LsaColor", "LxnColor"}) {
    auto* combo = Find<QComboBox>(d, QString::fromLatin1(name));
    QCOMPARE(combo->count(), 16);
    QCOMPARE(combo->itemText(0), QStringLiteral("0 - Black"));
    QCOMPARE(combo->itemText(13), QStringLiteral("13 - Light Magenta"));
    QCOMPARE(combo->itemText(15), QStringLiteral("15 - Bright White"));
  }
  for (const char* name : {"LineTypeLSA", "LineTypeLXN"}) {
    auto* combo = Find<QComboBox>(d, QString::fromLatin1(name));
    QCOMPARE(combo->count(), 6);
    QCOMPARE(combo->itemText(3), QStringLiteral("3- Dash-Dot"));
    QCOMPARE(combo->itemText(5), QStringLiteral("5- Inside Fill"));
  }
  for (int k = 1; k <= 13; ++k) Find<QPushButton>(d, QStringLiteral("cmdBrowse%1").arg(k));
  for (int k = 1; k <= 12; ++k) {
    Find<QLineEdit>(d, QStringLiteral("txtPath%1").arg(k));
    Find<QLineEdit>(d, QStringLiteral("txtCaption%1").arg(k));
  }

  QCOMPARE(Find<QCheckBox>(d, "chkLXN")->text(), QStringLiteral("load LXN lines"));
  QCOMPARE(Find<QCheckBox>(d, "chkLinesRAW")->text(), QStringLiteral("RAW Lines"));
  QCOMPARE(Find<QCheckBox>(d, "chkRPO")->text(), QStringLiteral("Raw Polygons"));
  QCOMPARE(Find<QCheckBox>(d, "chkControl")->text(), QStringLiteral("Control Points"));
  QCOMPARE(Find<QRadioButton>(d, "optBackground1")->text(), QStringLiteral("Dark Text on Light Background"));
  QCOMPARE(Find<QRadioButton>(d, "optBackground2")->text(), QStringLiteral("Light Text on Dark Background"));

  QStringList groups;
  for (auto* box : d.findChildren<QGroupBox*>()) groups << box->title();
  QVERIFY(groups.contains(QStringLiteral("Background Color / Text")));
  QVERIFY(groups.contains(QStringLiteral("Text Editor")));

  QStringList labels;
  for (auto* label : d.findChildren<QLabel*>()) labels << label->text();
  for (const char* text :
       {"Point Size for COR file", "Point Size for Control Points", "Pan Increment", "Zoom Increment",
        "Hint: Large Zoom Increments work well for mouse zooming, Smaller Values work well for \"GoTo\" functions.  "
        "Varying these can result in a wide variey of effects.   Pan Increments have no effect on mouse panning, "
        "only apply to keyboard and menu pan options.",
        "Choose \"OK\" for temporary change, \"Save\" to store a configuration file which will be used next time "
        "you start the application."}) {
    QVERIFY2(labels.contains(QString::fromLatin1(text)), text);
  }

  QCOMPARE(Find<QPushButton>(d, "cmdOK")->text(), QStringLiteral("OK"));
  QCOMPARE(Find<QPushButton>(d, "cmdSave")->text(), QStringLiteral("Save"));
  QCOMPARE(Find<QPushButton>(d, "cmdCancel")->text(), QStringLiteral("Cancel"));
  QCOMPARE(Find<QPushButton>(d, "cmdRestore")->text(), QStringLiteral("Restore Defaults"));
}

void ConfigDialogTest::fieldsAreFilledFromTheSettingsWhenShown() {
  Bench b;
  ConfigDialog d(b.session);
  // Settings changed after the dialog was built are what it shows.
  b.session.config = Changed();
  b.session.config.ToolButton[0] = {"C:\\Program Files\\\xC9" "diteur.exe", "\xC9" "dit"};
  d.show();
  QCOMPARE(Find<QSpinBox>(d, "PtSizeCor")->value(), 7);
  QCOMPARE(Find<QComboBox>(d, "CorColor")->currentText(), QStringLiteral("12 - Light Red"));
  QCOMPARE(Find<QComboBox>(d, "LineTypeLSA")->currentText(), QStringLiteral("2- Dot"));
  QCOMPARE(Find<QComboBox>(d, "LineTypeLXN")->currentText(), QStringLiteral("4- Dash-Dot-Dot"));
  QCOMPARE(Find<QDoubleSpinBox>(d, "PanPercent")->value(), 12.5);
  QVERIFY(!Find<QCheckBox>(d, "chkLXN")->isChecked());
  QVERIFY(Find<QCheckBox>(d, "chkLinesRAW")->isChecked());
  QVERIFY(!Find<QCheckBox>(d, "chkLinesLSA")->isChecked());
  QVERIFY(Find<QRadioButton>(d, "optBackground2")->isChecked());
  QVERIFY(!Find<QRadioButton>(d, "optBackground1")->isChecked());
  QCOMPARE(Find<QLineEdit>(d, "txtPath2")->text(), QStringLiteral("none"));
  QCOMPARE(Find<QLineEdit>(d, "txtCaption12")->text(), QStringLiteral("Twelve"));
  // Single-byte text shows as Latin-1 and goes back unchanged.
  QCOMPARE(Find<QLineEdit>(d, "txtCaption1")->text(), QString::fromUtf8("\xC3\x89" "dit"));
  QCOMPARE(d.Collect(), b.session.config);
  // Filling the check is not a click: the setting is untouched.
  QCOMPARE(b.session.config.chkLXN, std::int16_t{0});
}

void ConfigDialogTest::saveWritesTheFileThatTheNextStartReads() {
  Bench b;
  ConfigDialog d(b.session);
  d.show();
  EnterChanged(d);
  Find<QPushButton>(d, "cmdSave")->click();

  QCOMPARE(d.result(), int(QDialog::Accepted));
  QVERIFY(!d.isVisible());
  QCOMPARE(b.session.config, Changed());
  QVERIFY(b.CfgExists());
  QCOMPARE(ReadConfig(b.CfgPath().toStdString()), Changed());
  QCOMPARE(b.user.toolButtons.size(), std::size_t{2});
  QCOMPARE(b.user.toolButtons[3], std::string("Three"));
  QCOMPARE(b.user.toolButtons[12], std::string("Twelve"));
  QCOMPARE(b.display.refreshes, 1);

  // The next start, on the same tool folder.
  RecordingUserPort user;
  NullCanvas canvas;
  RecordingProcessPort processes;
  Session next(user, canvas, processes);
  next.ToolFolder = b.session.ToolFolder;
  MainFormLoad(next);
  QCOMPARE(next.config, Changed());
  QCOMPARE(user.toolButtons[3], std::string("Three"));
  QVERIFY(user.checked.at("Raw"));
  QVERIFY(user.checked.at("parcel"));
  QVERIFY(!user.checked.at("Lsa"));
}

void ConfigDialogTest::okChangesTheSettingsAndWritesNothing() {
  Bench b;
  ConfigDialog d(b.session);
  d.show();
  EnterChanged(d);
  Find<QPushButton>(d, "cmdOK")->click();

  QCOMPARE(d.result(), int(QDialog::Accepted));
  QVERIFY(!d.isVisible());
  QCOMPARE(b.session.config, Changed());
  QVERIFY(!b.CfgExists());
  QCOMPARE(b.display.refreshes, 1);
  QVERIFY(b.user.checked.at("Lxn"));
  QVERIFY(b.user.checked.at("mnuViewRPO"));
  QVERIFY(!b.user.checked.at("mnuViewPoints"));
  // Light text on a dark background.
  const auto colours = b.canvas.Of("Colours");
  QCOMPARE(colours.size(), std::size_t{1});
  QCOMPARE(colours[0].args, (std::vector<double>{0.0, double(0xFFFFFF)}));
}

void ConfigDialogTest::okKeepsValuesTheFieldsCannotShow() {
  Bench b;
  Config odd;
  odd.CorColor = 20;
  odd.LineTypeLXN = 9;
  odd.PtSizeCor = -3;
  odd.ZoomPercent = 12.34567f;
  odd.BackgroundMode = 3;
  b.session.config = odd;
  ConfigDialog d(b.session);
  d.show();
  QCOMPARE(Find<QComboBox>(d, "CorColor")->currentIndex(), -1);
  QVERIFY(!Find<QRadioButton>(d, "optBackground1")->isChecked());
  QVERIFY(!Find<QRadioButton>(d, "optBackground2")->isChecked());
  Find<QPushButton>(d, "cmdOK")->click();
  QCOMPARE(b.session.config, odd);

  // A change the user makes does count.
  d.show();
  Find<QSpinBox>(d, "PtSizeCor")->setValue(5);
  Find<QRadioButton>(d, "optBackground1")->setChecked(true);
  Find<QPushButton>(d, "cmdOK")->click();
  QCOMPARE(b.session.config.PtSizeCor, std::int16_t{5});
  QCOMPARE(b.session.config.BackgroundMode, std::int16_t{1});
  QCOMPARE(b.session.config.CorColor, std::int16_t{20});
}

void ConfigDialogTest::eachViewingCheckSetsItsOwnSetting() {
  struct Field {
    const char* name;
    std::int16_t Config::*member;
  };
  const Field fields[] = {{"chkLinesLSA", &Config::chkLinesLSA}, {"chkLinesLXN", &Config::chkLinesLXN},
                          {"chkLinesRAW", &Config::chkLinesRAW}, {"chkRPO", &Config::chkRPO},
                          {"chkPoints", &Config::chkPoints},     {"chkControl", &Config::chkControl},
                          {"chkParcels", &Config::chkParcels}};
  Config none;
  for (const Field& f : fields) none.*f.member = 0;
  for (const Field& f : fields) {
    Bench b;
    b.session.config = none;
    ConfigDialog d(b.session);
    d.show();
    Find<QCheckBox>(d, QString::fromLatin1(f.name))->click();
    Find<QPushButton>(d, "cmdOK")->click();
    Config expected = none;
    expected.*f.member = 1;
    QVERIFY2(b.session.config == expected, f.name);
  }
}

void ConfigDialogTest::restoreAnsweredYesDeletesTheFileAndResets() {
  Bench b;
  WriteConfig(b.CfgPath().toStdString(), Changed());
  b.session.config = Changed();
  b.user.answers.push_back(Answer::Yes);
  ConfigDialog d(b.session);
  d.show();
  Find<QPushButton>(d, "cmdRestore")->click();

  QCOMPARE(b.user.messages.size(), std::size_t{1});
  QCOMPARE(b.user.messages[0].text,
           std::string("Restore original values? Clicking yes will overwrite any custom settings your have setup."));
  QVERIFY(b.user.messages[0].buttons == Buttons::YesNo);
  QVERIFY(!b.CfgExists());
  QCOMPARE(b.session.config, Config{});
  QCOMPARE(d.result(), int(QDialog::Accepted));
  QVERIFY(!d.isVisible());
  // Shown again, the dialog holds the defaults.
  d.show();
  QCOMPARE(d.Collect(), Config{});
}

void ConfigDialogTest::restoreAnsweredNoKeepsEverything() {
  Bench b;
  WriteConfig(b.CfgPath().toStdString(), Changed());
  b.session.config = Changed();
  b.user.answers.push_back(Answer::No);
  ConfigDialog d(b.session);
  d.show();
  Find<QPushButton>(d, "cmdRestore")->click();

  QCOMPARE(b.user.messages.size(), std::size_t{1});
  QVERIFY(b.CfgExists());
  QCOMPARE(ReadConfig(b.CfgPath().toStdString()), Changed());
  QCOMPARE(b.session.config, Changed());
  QVERIFY(d.isVisible());
  QCOMPARE(d.Collect(), Changed());
}

void ConfigDialogTest::lxnCheckTakesEffectAtOnceAndCancelKeepsIt() {
  Bench b;
  ConfigDialog d(b.session);
  d.show();
  auto* lxn = Find<QCheckBox>(d, "chkLXN");
  QVERIFY(lxn->isChecked());
  lxn->click();
  QCOMPARE(b.session.config.chkLXN, std::int16_t{0});
  // Other fields changed meanwhile are dropped by Cancel; the check is not.
  Find<QSpinBox>(d, "PtSizeCor")->setValue(11);
  Find<QPushButton>(d, "cmdCancel")->click();
  QCOMPARE(d.result(), int(QDialog::Rejected));
  QVERIFY(!d.isVisible());
  QCOMPARE(b.session.config.chkLXN, std::int16_t{0});
  QCOMPARE(b.session.config.PtSizeCor, std::int16_t{4});
  QVERIFY(!b.CfgExists());
  QCOMPARE(b.display.refreshes, 0);

  d.show();
  QVERIFY(!lxn->isChecked());
  lxn->click();
  QCOMPARE(b.session.config.chkLXN, std::int16_t{1});
}

void ConfigDialogTest::browseWritesIntoTheFieldOfItsEntry() {
  Bench b;
  ConfigDialog d(b.session);
  std::vector<int> asked;
  QString answer = QStringLiteral("/opt/bin/chosen");
  d.SetProgramChooser([&](int entry, const QString&) {
    asked.push_back(entry);
    return answer;
  });
  d.show();
  Find<QPushButton>(d, "cmdBrowse7")->click();
  QCOMPARE(Find<QLineEdit>(d, "txtPath7")->text(), QStringLiteral("/opt/bin/chosen"));
  QCOMPARE(Find<QLineEdit>(d, "txtPath6")->text(), QStringLiteral("none"));
  QCOMPARE(Find<QLineEdit>(d, "txtPath8")->text(), QStringLiteral("none"));
  QCOMPARE(Find<QLineEdit>(d, "txtCaption7")->text(), QString());

  answer = QStringLiteral("/usr/bin/editor");
  Find<QPushButton>(d, "cmdBrowse13")->click();
  QCOMPARE(Find<QLineEdit>(d, "EditorPath")->text(), QStringLiteral("/usr/bin/editor"));

  // A cancelled choice leaves the field as it is.
  answer.clear();
  Find<QPushButton>(d, "cmdBrowse1")->click();
  QCOMPARE(Find<QLineEdit>(d, "txtPath1")->text(), QStringLiteral("none"));
  QCOMPARE(asked, (std::vector<int>{7, 13, 1}));
  // Browsing alone changes no setting.
  QCOMPARE(b.session.config, Config{});
}

}  // namespace tessel

QTEST_MAIN(tessel::ConfigDialogTest)
#include "config_dialog_test.moc"
