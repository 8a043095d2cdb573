// A modal window that shows a picture which somebody else draws, and shows it anew while a worker still draws.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/keys.h"

namespace platform {

// Called by the platform on the window's thread. Must not throw.
class SurfaceWindowClient {
 public:
  virtual ~SurfaceWindowClient() = default;
  // Copies the picture, width x height pixels of 0x00RRGGBB, top row first. A worker may draw meanwhile: the client
  // sees to it that a pixel is read whole.
  virtual void CopyPixels(std::uint32_t* to) = 0;
  virtual void OnKey(const KeyPress& key) = 0;
};

class SurfaceWindow {
 public:
  SurfaceWindow();
  ~SurfaceWindow();
  SurfaceWindow(const SurfaceWindow&) = delete;
  SurfaceWindow& operator=(const SurfaceWindow&) = delete;

  // Returns when the window has closed; false when it could not be made.
  bool RunModal(const std::string& caption, int width, int height, SurfaceWindowClient* client);
  void Close();
  // Has the picture copied and shown again soon. Any thread may ask.
  void Repaint();

  struct Impl;

 private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform
