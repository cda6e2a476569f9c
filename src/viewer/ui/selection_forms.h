#pragma once
// The selection list windows: frmSelectedPoints ("List Points"), frmTesting ("Selected Parcel
// Id's") and frmSelectedLines ("Selected Lines"), always on top of the main window, each showing
// its list of the session's selection and remembering its place in ts$002.cfg; and frmFind.

#include <QListWidget>
#include <QPushButton>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "forms/ui/session_view.h"
#include "model/session.h"

namespace tessel {

// A list window of the selection; `Reload` shows the list anew from the session.
class SelectionForm : public QWidget {
  Q_OBJECT

 public:
  // `key`: its name in ts$002.cfg.
  SelectionForm(Session& session, const QString& name, const QString& title, const std::string& key,
                QWidget* parent);

 public slots:
  void Reload();

 protected:
  QPushButton* AddButton(const char* name, const QString& caption);
  virtual const std::vector<std::string>& Entries() const = 0;
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

  Session& session_;
  QListWidget* list_ = nullptr;
  QWidget* buttons_ = nullptr;

 private:
  std::string key_;
  std::unique_ptr<SessionView> view_;
};

class SelectedPointsForm : public SelectionForm {
  Q_OBJECT
 public:
  SelectedPointsForm(Session& session, QWidget* parent);

 protected:
  const std::vector<std::string>& Entries() const override { return session_.selection.PointList; }
  void closeEvent(QCloseEvent* event) override;
};

class SelectedParcelsForm : public SelectionForm {
  Q_OBJECT
 public:
  SelectedParcelsForm(Session& session, QWidget* parent);

 protected:
  const std::vector<std::string>& Entries() const override { return session_.selection.ParcelList(); }
  void resizeEvent(QResizeEvent* event) override;
};

class SelectedLinesForm : public SelectionForm {
  Q_OBJECT
 public:
  SelectedLinesForm(Session& session, QWidget* parent);

 protected:
  const std::vector<std::string>& Entries() const override { return session_.selection.LineList; }

 private:
  void Print();
};

// frmFind: searches a list by the characters from column 4 on; the text is kept between uses.
class FindForm : public QWidget {
  Q_OBJECT
 public:
  FindForm(Session& session, QListWidget* target, QWidget* parent);

 private:
  void Search(int start);
  Session& session_;
  QListWidget* target_;
  static QString kept_;
};

}  // namespace tessel
