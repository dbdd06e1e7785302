#include "tests/ui/hand.h"

#include <wx/uiaction.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "tests/ui/user.h"

namespace gorbex::test {

void DragByHand(const wxPoint& start, const wxPoint& end) {
  using namespace std::chrono_literals;
  constexpr int kSteps = 10;
  std::atomic<bool> isOver = false;
  std::thread hand([&] {
    wxUIActionSimulator simulator;
    for (int step = 0; step <= kSteps; ++step) {
      simulator.MouseMove(start + (end - start) * step / kSteps);
      std::this_thread::sleep_for(30ms);
      if (step == 0) simulator.MouseDown();
    }
    std::this_thread::sleep_for(50ms);
    simulator.MouseUp();
    std::this_thread::sleep_for(100ms);
    isOver = true;
  });
  static_cast<void>(User::Sees([&] { return isOver.load(); }));
  hand.join();
}

}  // namespace gorbex::test
