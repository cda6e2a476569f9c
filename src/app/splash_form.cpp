#include "app/splash_form.h"

#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

namespace tessel {

SplashForm::SplashForm(int milliseconds, QWidget* parent) : QDialog(parent, Qt::SplashScreen | Qt::FramelessWindowHint) {
  setObjectName(QStringLiteral("frmSplash"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(32, 28, 32, 28);
  auto* picture = new QLabel(QStringLiteral("Tessel"), this);
  picture->setObjectName(QStringLiteral("imgLogo"));
  QFont big = picture->font();
  big.setPointSize(big.pointSize() * 3);
  big.setBold(true);
  picture->setFont(big);
  picture->setAlignment(Qt::AlignCenter);
  layout->addWidget(picture);
  auto* caption = new QLabel(QStringLiteral("Measurement records of the public land survey"), this);
  caption->setAlignment(Qt::AlignCenter);
  layout->addWidget(caption);
  auto* version = new QLabel(QStringLiteral("Version %1").arg(QStringLiteral(TESSEL_VERSION)), this);
  version->setObjectName(QStringLiteral("lblVersion"));
  version->setAlignment(Qt::AlignCenter);
  layout->addWidget(version);
  setStyleSheet(QStringLiteral("QDialog { background: #1f3b57; } QLabel { color: white; }"));
  QTimer::singleShot(milliseconds, this, &QDialog::accept);
}

void SplashForm::mousePressEvent(QMouseEvent*) { accept(); }

}  // namespace tessel
