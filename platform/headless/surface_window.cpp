#include "platform/surface_window.h"

#include <vector>

#include "platform/headless/desktop.h"

namespace platform {

struct SurfaceWindow::Impl : headless::ModalWindow {
  void OnKey(const KeyPress& key) override { client->OnKey(key); }
  // There is no screen to look at: what is printed is what a picture can be called.
  std::string Show() override { return caption + "\n"; }

  std::string caption;
  SurfaceWindowClient* client = nullptr;
};

SurfaceWindow::SurfaceWindow() : impl_(std::make_unique<Impl>()) {}
SurfaceWindow::~SurfaceWindow() = default;

bool SurfaceWindow::RunModal(const std::string& caption, int, int, SurfaceWindowClient* client) {
  impl_->caption = caption;
  impl_->client = client;
  impl_->RunModal();
  return true;
}

void SurfaceWindow::Close() {
  impl_->Close();
}

void SurfaceWindow::Repaint() {}

}  // namespace platform
