#include "ui/panel/frm_place.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "ui/controls/night_proof.h"
#include "ui/controls/night_style.h"
#include "ui/controls/panel_texts.h"

namespace orvalis {

frmPlace::frmPlace(const std::optional<Place>& current, NumberLocale locale, Describe describe, QWidget* parent)
    : QDialog(parent), describe_(std::move(describe)) {
  setObjectName("frmPlace");
  setWindowTitle(tr("Orvalis Place"));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* column = new QVBoxLayout(this);
  auto* purpose =
      new QLabel(tr("Where the observatory is, for the sun, dusk and dawn on the panel. It is sent nowhere."));
  purpose->setWordWrap(true);
  column->addWidget(purpose);
  auto* form = new QFormLayout;
  column->addLayout(form);
  const auto text = [&](double Place::*degrees) {
    return current ? ToQString(RealToText(*current.*degrees, locale)) : QString();
  };
  latitude_ = AddBox("txtLatitude", text(&Place::latitude), tr("Degrees, north is positive; or as 48°08'14\" N"));
  longitude_ = AddBox("txtLongitude", text(&Place::longitude), tr("Degrees, east is positive; or as 11°34'30\" W"));
  form->addRow(tr("&Latitude:"), latitude_);
  form->addRow(tr("L&ongitude:"), longitude_);
  advice_ = new QLabel;
  advice_->setObjectName("lblAdvice");
  advice_->setTextFormat(Qt::PlainText);
  advice_->setWordWrap(true);
  advice_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  constexpr int kLines = 2;
  advice_->setMinimumHeight(kLines * advice_->fontMetrics().lineSpacing());
  column->addWidget(advice_, 1);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  ok_ = buttons->button(QDialogButtonBox::Ok);
  column->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &frmPlace::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  Check();
  latitude_->setFocus();
  latitude_->selectAll();
  DressWindow(*this, IsNight(parent));
  if (IsNight(parent)) {
    for (QAbstractButton* button : buttons->buttons()) button->setIcon({});  // they are coloured
  }
  setMinimumWidth(advice_->fontMetrics().averageCharWidth() * 60);
}

QLineEdit* frmPlace::AddBox(const char* name, const QString& text, const QString& tip) {
  auto* box = new NightProof<QLineEdit>(this);
  box->setObjectName(name);
  box->setText(text);
  box->setToolTip(tip);
  box->setAccessibleDescription(tip);
  connect(box, &QLineEdit::textChanged, this, &frmPlace::Check);
  return box;
}

void frmPlace::Check() {
  const std::string latitude = latitude_->text().trimmed().toStdString();
  const std::string longitude = longitude_->text().trimmed().toStdString();
  const auto north = ParseCoordinate(latitude, Axis::kLatitude);
  const auto east = ParseCoordinate(longitude, Axis::kLongitude);
  const bool none = latitude.empty() && longitude.empty();
  place_.reset();
  if (north && east) place_ = Place{.latitude = *north, .longitude = *east};
  QString advice;
  if (place_) {
    advice = ToQString(describe_(*place_).line);
  } else if (none) {
    advice = tr("No place: the panel does not show the sun.");
  } else if (!north) {
    advice =
        latitude.empty() ? tr("The latitude is missing.") : tr("The latitude is a number of degrees from -90 to 90.");
  } else {
    advice = longitude.empty() ? tr("The longitude is missing.")
                               : tr("The longitude is a number of degrees from -180 to 180.");
  }
  advice_->setText(advice);
  ok_->setEnabled(none || place_);
}

void frmPlace::accept() {
  emit Chosen(place_);
  QDialog::accept();
}

}  // namespace orvalis
