#include "host/standin/EmbeddedHost.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <chrono>
#include <span>
#include <string_view>

#include "host/standin/DemoAnimation.h"
#include "host/standin/StandInWindow.h"
#include "host/standin/stand_in.h"
#include "platform/Application.h"
#include "platform/Translation.h"

namespace host {
namespace {

constexpr std::chrono::milliseconds kBehindFirstPaint{50};

/// Shows the stand-in's window a moment behind the first window that the tool has painted: who starts the
/// tool waits for that one.
class SecondShow : public QObject {
 public:
  explicit SecondShow(QWidget* window) : QObject(window), window_(window) { qApp->installEventFilter(this); }

  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() != QEvent::Paint || !object->isWidgetType()) return false;
    qApp->removeEventFilter(this);
    QTimer::singleShot(kBehindFirstPaint, window_, &QWidget::show);
    return false;
  }

 private:
  QWidget* const window_;
};

/// The stand-in and its window, held together.
class EmbeddedHost final : public HostObject {
 public:
  EmbeddedHost() : stand_in_(std::make_shared<StandIn>(DrawDemoAnimation())) {
    stand_in_->SetAppDir(QCoreApplication::applicationDirPath().toStdString());
    platform::TranslateToolkit(platform::ToolkitSpeaks::UsersLanguageWhereAsked);
    platform::Translate("standin");
    window_ = new StandInWindow(stand_in_, RunsAs::PartOfTool);
    // The tool holds its host until the process ends, which is later than a window can live.
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, window_, [window = window_] { delete window; });
    platform::AskBeforeEnd([window = window_] { return !window || window->MayEndWithTool(); });
    new SecondShow(window_);
  }
  ~EmbeddedHost() override {
    platform::AskBeforeEnd(nullptr);
    if (QCoreApplication::instance() != nullptr) delete window_;
  }

  Variant Invoke(std::string_view member, std::span<const Variant> arguments) override {
    return stand_in_->Invoke(member, arguments);
  }

 private:
  std::shared_ptr<StandIn> stand_in_;
  QPointer<StandInWindow> window_;
};

}  // namespace

std::shared_ptr<HostObject> MakeEmbeddedHost() { return std::make_shared<EmbeddedHost>(); }

}  // namespace host
