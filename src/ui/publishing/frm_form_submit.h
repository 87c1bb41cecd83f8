#pragma once

#include <QDialog>
#include <QPixmap>
#include <QPointer>
#include <QTimer>
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "publish/web_publisher.h"
#include "ui/controls/form_section.h"
#include "ui/publishing/picture_view.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace orvalis {

class MessageBox;
class RowsEditor;

/// The web publishing window: what is sent where and when, the request to be sent, the server's response. It passes the
/// user's actions to a WebPublisher and shows its boxes; it decides nothing. Closing hides it.
class frmFormSubmit : public QDialog, public MessageBoxes, public PanelPicture {
  Q_OBJECT
 public:
  /// `grab_panel` renders the main panel.
  frmFormSubmit(WebPublisher& publisher, std::function<QPixmap()> grab_panel, QWidget* parent = nullptr);
  frmFormSubmit(const frmFormSubmit&) = delete;
  frmFormSubmit& operator=(const frmFormSubmit&) = delete;
  ~frmFormSubmit() override;

  /// Fills the controls from the loaded settings and writes the transfer script.
  void Load();
  /// For a system without built-in FTP.
  void HideBuiltIn();
  /// Shows the window in front.
  void ShowInFront();
  /// Updates the request preview from the readings, if visible.
  void RefreshPreview();
  /// Black and red, or the desktop's colours.
  void SetNightTheme(bool on);

  void ShowMessage(std::string_view text, std::string_view title) override;
  void Capture() override { picture_->SetPicture(grab_panel_()); }
  void SaveBitmap(const std::string& path) override { picture_->Save(path, "BMP"); }
  void SaveJpeg(const std::string& path) override { picture_->Save(path, "JPG"); }

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* BuildSettings();
  QWidget* BuildExchange();
  QWidget* BuildComposer();
  QWidget* BuildErrors();
  QLineEdit* MakeText(std::size_t index);
  /// The user typed into a box: stores the text, shows it in the other box of the same setting, and updates the
  /// remarks.
  void StoreText(std::size_t index, const QString& text);
  void ShowRemarks();
  /// A check box followed by its list of intervals.
  QWidget* BuildInterval(std::size_t index, const QString& text);
  QPlainTextEdit* MakeBox(const char* name);

  void ReadComposition();
  /// A line below `button` for the account and the server.
  static QLabel* MakeTarget(FormSection& section, const char* name, QPushButton* button);
  void ShowTargets();
  /// Sends, when uploads of row `index` are off only after the user has agreed to this one.
  void Send(std::size_t index, const std::function<void(Permission)>& send);
  /// Updates the boxes after a short delay: a server may send faster than anyone can read.
  void ScheduleRefresh();
  void Refresh();

  WebPublisher& publisher_;
  std::function<QPixmap()> grab_panel_;
  QTimer refresh_;
  std::uint64_t response_shown_ = 0;
  std::uint64_t errors_shown_ = 0;
  QPointer<MessageBox> message_;

  // In the order of the tables in submit_fields.h.
  std::array<QLineEdit*, kSubmitTexts.size()> texts_{};
  std::array<QLabel*, kSubmitTexts.size()> remarks_{};  ///< below the boxes of the account; none for the others
  std::array<QCheckBox*, kSubmitSwitches.size()> switches_{};
  std::array<QComboBox*, kSubmitIntervals.size()> intervals_{};
  std::array<QLabel*, kSubmitIntervals.size()> targets_{};
  QPushButton* send_ = nullptr;
  QPushButton* capture_ = nullptr;
  PictureView* picture_ = nullptr;
  QLabel* request_caption_ = nullptr;
  QPlainTextEdit* request_ = nullptr;
  QPlainTextEdit* response_ = nullptr;
  QPlainTextEdit* errors_ = nullptr;
  QComboBox* method_ = nullptr;
  RowsEditor* variables_ = nullptr;
  RowsEditor* headers_ = nullptr;
};

}  // namespace orvalis
