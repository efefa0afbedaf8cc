#include "host/standin/NewAnimationDialog.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSpinBox>

#include "host/bus/Connection.h"

namespace host {
namespace {

/// A tool that asks for bytes gets each plane in one message of the bus: no more pixels than go into that.
constexpr int kMostPixelsPerSide = 8190;
static_assert(FrameSize{kMostPixelsPerSide, kMostPixelsPerSide}.PlaneBytes() <= kMostBytesInMessage);
constexpr int kMostFrames = 32767;

QSpinBox* AddNumber(QFormLayout* rows, const char* name, const QString& label, const QString& unit, int most,
                    int value) {
  auto* box = new QSpinBox;
  box->setObjectName(name);
  box->setRange(1, most);
  box->setSuffix(unit);
  box->setValue(value);
  box->setMinimumWidth(130);
  rows->addRow(label, box);
  return box;
}

}  // namespace

std::optional<Animation> AskForNewAnimation(QWidget* parent, FrameSize proposal) {
  QDialog dialog(parent);
  dialog.setObjectName("NewAnimation");
  dialog.setWindowTitle(QObject::tr("New animation"));
  auto* rows = new QFormLayout(&dialog);
  rows->setContentsMargins(18, 16, 18, 14);
  rows->setSpacing(10);
  QSpinBox* width = AddNumber(rows, "Width", QObject::tr("&Width"), QObject::tr(" pixels"),
                              kMostPixelsPerSide, proposal.width);
  QSpinBox* height = AddNumber(rows, "Height", QObject::tr("&Height"), QObject::tr(" pixels"),
                               kMostPixelsPerSide, proposal.height);
  QSpinBox* frames =
      AddNumber(rows, "Frames", QObject::tr("&Length"), QObject::tr(" frames"), kMostFrames, 48);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  rows->addRow(buttons);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  // Whoever types replaces the number, as after a Tab.
  width->selectAll();
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return Animation({width->value(), height->value()}, frames->value());
}

}  // namespace host
