#include "host/standin/EmbeddedHost.h"

#include <QCoreApplication>
#include <QPointer>
#include <span>
#include <string_view>

#include "host/standin/DemoAnimation.h"
#include "host/standin/StandInWindow.h"
#include "host/standin/stand_in.h"
#include "platform/Application.h"
#include "platform/Translation.h"

namespace host {
namespace {

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
    window_->show();
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
