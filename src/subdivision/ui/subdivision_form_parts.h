#pragma once
// What the subdivision's forms build alike: labels and fields by name, the OK/Cancel and wizard
// button rows, and the way a dialog is run.

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QString>
#include <functional>
#include <string>

namespace tessel::subdivision_form {

QLabel* Label(QWidget* parent, const QString& text, const QString& name = {});
QLineEdit* Field(QWidget* parent, const QString& name, const QString& text = {});
QHBoxLayout* OkCancel(QDialog* dialog);
std::string Text(const QLineEdit* field);
// The wizards' buttons: "<-- Back", "Finish", "Cancel"; Finish runs `finish`, which keeps the
// wizard open when it refuses.
QHBoxLayout* WizardButtons(QDialog* wizard, std::function<bool()> finish);
inline constexpr const char* kSectionPrompt = "Section number or NOMGRID center of section ID";
int ExecDialog(QDialog& dialog);

}  // namespace tessel::subdivision_form
