// frmConfig on the offscreen platform: its texts and lists, the fields filled from the settings,
// Save writing Tessel.cfg that the next start reads back, OK changing only the running settings
// (programs chosen through Browse included), Restore Defaults on No and on Yes, and the "load LXN
// lines" check that takes effect at once.

#include <QAbstractButton>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>
#include <string>
#include <utility>
#include <vector>

#include "job/ui/config_dialog.h"
#include "model/config.h"
#include "job/load_sequence.h"
#include "model/recording_ports.h"
#include "model/session.h"

namespace tessel {
namespace {

// A session of its own on recording ports, with a temporary tool folder.
struct Bench {
  Bench() { session.ToolFolder = tools.path().toStdString(); }
  QString CfgPath() const { return tools.filePath(QStringLiteral("Tessel.cfg")); }

  QTemporaryDir tools;
  RecordingUserPort user;
  NullCanvas canvas;
  RecordingProcessPort processes;
  Session session{user, canvas, processes};
};

template <typename W = QWidget>
W* Find(QWidget& parent, const char* name) {
  W* widget = parent.findChild<W*>(QString::fromLatin1(name));
  if (!widget) qFatal("no widget %s", name);
  return widget;
}

void Click(QWidget& parent, const char* name) { Find<QAbstractButton>(parent, name)->click(); }

// The property through which a field shows its value.
const char* ValueOf(const QWidget* field) {
  if (qobject_cast<const QComboBox*>(field)) return "currentIndex";
  if (qobject_cast<const QLineEdit*>(field)) return "text";
  if (qobject_cast<const QAbstractButton*>(field)) return "checked";
  return "value";
}

// A setting of every kind changed from its default, with single-byte text that the fields show
// as Latin-1; and the fields as they show it.
Config Changed() {
  Config c{.PtSizeCor = 7, .CorColor = 12, .PtSizeCtrl = 3, .CtrlColor = 0, .LineTypeLSA = 2, .LsaColor = 15,
           .LineTypeLXN = 4, .LxnColor = 6, .PanPercent = 12.5f, .ZoomPercent = 30.0f, .chkLXN = 0,
           .EditorPath = "/usr/bin/vi", .chkLinesLSA = 0, .chkLinesLXN = 1, .chkLinesRAW = 1, .chkRPO = 1,
           .chkPoints = 0, .chkControl = 0, .chkParcels = 1, .BackgroundMode = 2};
  c.ToolButton[2] = {"/opt/tools/three", "\xC9" "dit"};
  c.ToolButton[11] = {"/opt/tools/twelve", "Twelve"};
  return c;
}
std::vector<std::pair<const char*, QVariant>> ChangedFields() {
  return {{"PtSizeCor", 7}, {"CorColor", 12}, {"PtSizeCtrl", 3}, {"CtrlColor", 0}, {"LineTypeLSA", 2},
          {"LsaColor", 15}, {"LineTypeLXN", 4}, {"LxnColor", 6}, {"PanPercent", 12.5}, {"ZoomPercent", 30.0},
          {"chkLXN", false}, {"EditorPath", "/usr/bin/vi"}, {"txtPath3", "/opt/tools/three"},
          {"txtCaption3", QString::fromUtf8("\xC3\x89" "dit")}, {"txtPath12", "/opt/tools/twelve"},
          {"txtCaption12", "Twelve"}, {"chkLinesLSA", false}, {"chkLinesLXN", true}, {"chkLinesRAW", true},
          {"chkRPO", true}, {"chkPoints", false}, {"chkControl", false}, {"chkParcels", true},
          {"optBackground2", true}, {"optBackground1", false}};
}

// Shows the dialog and types the settings of Changed() into the fields, as a user would.
void EnterChanged(ConfigDialog& d) {
  d.show();
  for (const auto& [name, value] : ChangedFields()) Find(d, name)->setProperty(ValueOf(Find(d, name)), value);
}

}  // namespace

class ConfigDialogTest : public QObject {
  Q_OBJECT

 private slots:
  void textsAndLists() {
    Bench b;
    ConfigDialog d(b.session);
    QCOMPARE(d.objectName() + ": " + d.windowTitle(), QStringLiteral("frmConfig: Configuration Options"));
    const auto items = [&d](const char* name) {
      QStringList texts;
      for (int i = 0; i < Find<QComboBox>(d, name)->count(); ++i) texts << Find<QComboBox>(d, name)->itemText(i);
      return texts.join(QStringLiteral(", "));
    };
    for (const char* name : {"CorColor", "CtrlColor", "LsaColor", "LxnColor"}) {
      QCOMPARE(items(name), QStringLiteral("0 - Black, 1 - Blue, 2 - Green, 3 - Cyan, 4 - Red, 5 - Magenta, "
                                           "6 - Yellow, 7 - White, 8 - Gray, 9 - Light Blue, 10 - Light Green, "
                                           "11 - Light Cyan, 12 - Light Red, 13 - Light Magenta, 14 - Light Yellow, "
                                           "15 - Bright White"));
    }
    for (const char* name : {"LineTypeLSA", "LineTypeLXN"}) {
      QCOMPARE(items(name), QStringLiteral("0- Solid, 1- Dash, 2- Dot, 3- Dash-Dot, 4- Dash-Dot-Dot, 5- Inside Fill"));
    }
    QStringList seen;  // captions, labels, group titles and tab texts
    for (auto* w : d.findChildren<QWidget*>()) seen << w->property("text").toString() + w->property("title").toString();
    auto* tabs = d.findChild<QTabWidget*>();
    for (int i = 0; i < tabs->count(); ++i) seen << tabs->tabText(i);
    for (const char* text :
         {"Setup user-defined program buttons # 1-6", "Setup User Defined program buttons # 7 - 12",
          "Default Viewing Setup", "Background Color / Text", "Text Editor", "Point Size for COR file",
          "Point Size for Control Points", "Pan Increment", "Zoom Increment", "Dark Text on Light Background",
          "Light Text on Dark Background", "OK", "Save", "Cancel", "Restore Defaults", "Browse...",
          "Hint: Large Zoom Increments work well for mouse zooming, Smaller Values work well for \"GoTo\" "
          "functions.  Varying these can result in a wide variey of effects.   Pan Increments have no effect on "
          "mouse panning, only apply to keyboard and menu pan options.",
          "Choose \"OK\" for temporary change, \"Save\" to store a configuration file which will be used next "
          "time you start the application."}) {
      QVERIFY2(seen.contains(QString::fromLatin1(text)), text);
    }
  }

  void fieldsShowTheSettingsAndKeepWhatTheyCannotShow() {
    Bench b;
    ConfigDialog d(b.session);
    b.session.config = Changed();  // after the dialog was built
    d.show();
    for (const auto& [name, value] : ChangedFields()) {
      QVERIFY2(Find(d, name)->property(ValueOf(Find(d, name))) == value, name);
    }
    QCOMPARE(d.Collect(), Changed());
    // Values outside the lists, ranges and decimals come back as they were; filling the LXN
    // check is not a click, so its setting stays.
    const Config odd{.PtSizeCor = -3, .CorColor = 20, .LineTypeLXN = 9, .ZoomPercent = 1.23456f, .BackgroundMode = 3};
    d.Fill(odd);
    QCOMPARE(d.Collect(), odd);
    QCOMPARE(b.session.config.chkLXN, std::int16_t{0});
  }

  void eachCheckShowsAndGivesItsOwnSetting() {
    Bench b;
    ConfigDialog d(b.session);
    const struct { const char* name; const char* caption; std::int16_t Config::*member; } checks[] = {
        {"chkLXN", "load LXN lines", &Config::chkLXN},         {"chkLinesLSA", "LSA Lines", &Config::chkLinesLSA},
        {"chkLinesLXN", "LXN Lines", &Config::chkLinesLXN},    {"chkLinesRAW", "RAW Lines", &Config::chkLinesRAW},
        {"chkRPO", "Raw Polygons", &Config::chkRPO},           {"chkPoints", "Points", &Config::chkPoints},
        {"chkControl", "Control Points", &Config::chkControl}, {"chkParcels", "Parcels", &Config::chkParcels}};
    Config none;
    for (const auto& check : checks) none.*check.member = 0;
    for (const auto& check : checks) {
      Config one = none;
      one.*check.member = 1;
      d.Fill(one);
      const auto* box = Find<QAbstractButton>(d, check.name);
      QVERIFY2(box->text() == QLatin1String(check.caption) && box->isChecked() && d.Collect() == one, check.name);
    }
  }

  void saveWritesWhatTheNextStartReads() {
    Bench b;
    ConfigDialog d(b.session);
    EnterChanged(d);
    Click(d, "cmdSave");
    QVERIFY(d.result() == QDialog::Accepted && !d.isVisible());
    QCOMPARE(b.session.config, Changed());
    Session next(b.user, b.canvas, b.processes);
    next.ToolFolder = b.session.ToolFolder;
    MainFormLoad(next);
    QCOMPARE(next.config, Changed());
  }

  void okAppliesWhatWasEnteredOrBrowsedAndWritesNothing() {
    Bench b;
    ConfigDialog d(b.session);
    d.SetProgramChooser([](int k, const QString&) { return k == 1 ? QString() : QStringLiteral("/b/%1").arg(k); });
    EnterChanged(d);
    for (const char* browse : {"cmdBrowse7", "cmdBrowse13", "cmdBrowse1"}) Click(d, browse);  // 1 is cancelled
    Click(d, "cmdOK");
    QVERIFY(d.result() == QDialog::Accepted && !d.isVisible());
    Config expected = Changed();
    expected.ToolButton[6].path = "/b/7";
    expected.EditorPath = "/b/13";
    QCOMPARE(b.session.config, expected);
    QCOMPARE(b.user.toolButtons.size(), std::size_t{3});  // applied
    QVERIFY(!QFile::exists(b.CfgPath()));
  }

  void restoreAsksAndOnlyYesResets() {
    Bench b;
    WriteConfig(b.CfgPath().toStdString(), Changed());
    b.session.config = Changed();
    b.user.answers = {Answer::No, Answer::Yes};
    ConfigDialog d(b.session);
    d.show();
    Click(d, "cmdRestore");
    QCOMPARE(b.user.MessageTexts(), std::vector<std::string>{"Restore original values? Clicking yes will "
                                                             "overwrite any custom settings your have setup."});
    QVERIFY(b.user.messages[0].buttons == Buttons::YesNo && d.isVisible());
    QCOMPARE(ReadConfig(b.CfgPath().toStdString()), Changed());
    QCOMPARE(b.session.config, Changed());

    Click(d, "cmdRestore");
    QVERIFY(!QFile::exists(b.CfgPath()));
    QCOMPARE(b.session.config, Config{});
    QVERIFY(d.result() == QDialog::Accepted && !d.isVisible());
    d.show();
    QCOMPARE(d.Collect(), Config{});
  }

  void lxnCheckTakesEffectAtOnceAndCancelKeepsIt() {
    Bench b;
    ConfigDialog d(b.session);
    d.show();
    Click(d, "chkLXN");
    QCOMPARE(b.session.config.chkLXN, std::int16_t{0});
    Find(d, "PtSizeCor")->setProperty("value", 11);  // dropped by Cancel
    Click(d, "cmdCancel");
    QVERIFY(d.result() == QDialog::Rejected && !d.isVisible());
    QCOMPARE(b.session.config, Config{.chkLXN = 0});
    QVERIFY(!QFile::exists(b.CfgPath()) && b.user.checked.empty());
    d.show();
    Click(d, "chkLXN");
    QCOMPARE(b.session.config.chkLXN, std::int16_t{1});
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::ConfigDialogTest)
#include "config_dialog_test.moc"
