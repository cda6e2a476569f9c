#include "forms/ui/form_placing.h"

#include <QMainWindow>
#include <QWidget>

#include "paint/form_places.h"

namespace tessel {

void PlaceBesideMainWindow(QWidget& form) {
  QWidget* main = form.parentWidget() ? form.parentWidget()->window() : nullptr;
  if (main == nullptr) return;
  auto* frame = qobject_cast<QMainWindow*>(main);
  const int menuHeight = frame && frame->menuWidget() ? frame->menuWidget()->height() : 0;
  // The place is of the outer frame; the form's own frame is taken to be as the main window's.
  const QPoint border = main->geometry().topLeft() - main->frameGeometry().topLeft();
  form.setGeometry(BesideMain(main->frameGeometry(), main->geometry().top() + menuHeight, form.size()).translated(border));
}

}  // namespace tessel
