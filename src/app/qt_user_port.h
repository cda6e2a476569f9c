#pragma once
// The user port on Qt Widgets: message boxes, input boxes, file dialogs, the four status panels,
// the labels field, the window title and the states of menu entries found by their object names.
// Called from work on a worker thread, each call runs on the interface thread (the work waits).

#include <QLabel>
#include <QMainWindow>
#include <array>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "model/ports.h"
#include "paint/qt_text.h"

namespace tessel {

class QtUserPort : public UserPort {
 public:
  // `window` owns the menus and toolbar; `panels` are the four status panels and, fifth, the
  // field of the labels a refresh left out.
  QtUserPort(QMainWindow& window, std::array<QLabel*, 5> panels);

  Answer Message(const std::string& text, Icon icon, Buttons buttons, const std::string& title) override;
  std::optional<std::string> Input(const std::string& prompt, const std::string& title,
                                   const std::string& initial) override;
  std::optional<FileChoice> ChooseFile(const FileRequest& request) override;
  void Status(int panel, const std::string& text) override;
  void Note(const std::string& text) override;
  void SetPointer(Pointer pointer) override;
  void SetTitle(const std::string& title) override;
  void SetEnabled(const std::string& name, bool enabled) override;
  void SetChecked(const std::string& name, bool checked) override;
  void UnloadForm(const std::string& name) override;
  void ShowForm(const std::string& form) override;
  void YieldEvents() override;
  void SetToolButton(int k, const std::string& caption) override;
  void ShowPopup(const std::string& menu, const std::vector<std::string>& visible,
                 const std::vector<std::string>& hidden) override;
  void OuterSizeTwips(double& width, double& height) override;

  using PopupHandler = std::function<void(const std::string&, const std::vector<std::string>&,
                                          const std::vector<std::string>&)>;
  void SetPopupHandler(PopupHandler handler) { popup_ = std::move(handler); }

 private:
  Answer MessageHere(const std::string& text, Icon icon, Buttons buttons, const std::string& title);
  void ShowStatus(int panel, const std::string& text);
  // The panels' texts that work on a worker thread set since the interface thread last showed
  // them: a load sets thousands, and waiting for each to be shown would cost more than the load.
  void ShowPendingStatus();
  std::mutex pendingMutex_;
  std::array<std::optional<std::string>, 5> pendingStatus_;
  bool statusPosted_ = false;
  PopupHandler popup_;
  // A widget by its object name, or by "form/child" for a control of a tool form.
  QObject* Find(const std::string& name) const;
  QMainWindow& window_;
  std::array<QLabel*, 5> panels_;
  bool overridden_ = false;
};

}  // namespace tessel
