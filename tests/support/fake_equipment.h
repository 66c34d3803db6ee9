// All that an object of the library is made with, out of fakes that a test can reach.
#ifndef RK_TESTS_SUPPORT_FAKE_EQUIPMENT_H_
#define RK_TESTS_SUPPORT_FAKE_EQUIPMENT_H_

#include <functional>
#include <memory>
#include <string>

#include "classes/equipment.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/fixed_random.h"
#include "tests/support/memory_files.h"
#include "tests/support/recording_profile_strings.h"
#include "tests/support/scripted_http.h"
#include "tests/support/scripted_network.h"
#include "tests/support/toy_code_pages.h"

namespace rk::tests {

class FakeEquipment {
 public:
  // For one object; this outlives it.
  classes::Equipment equipment() {
    return {clock, random, code_pages, profile_strings, deployment, log_folder, http, network};
  }

  FixedClock clock;
  FixedRandom random;
  ToyCodePages code_pages;
  RecordingProfileStrings profile_strings;
  classes::Deployment deployment{platform::kGb2312, "Rkclient1.0.0", {}, {}};
  std::shared_ptr<MemoryFiles> log = std::make_shared<MemoryFiles>();
  std::function<classes::LogFolder()> log_folder = [this] {
    return classes::LogFolder{log, "/site/log"};
  };
  std::shared_ptr<ScriptedHttp> http = std::make_shared<ScriptedHttp>();
  std::shared_ptr<ScriptedNetwork> network = std::make_shared<ScriptedNetwork>();
};

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_FAKE_EQUIPMENT_H_
