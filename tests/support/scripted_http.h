// Answers for fetches, in order, and what was fetched. Past the last answer nobody answers.
#ifndef RK_TESTS_SUPPORT_SCRIPTED_HTTP_H_
#define RK_TESTS_SUPPORT_SCRIPTED_HTTP_H_

#include <string>
#include <vector>

#include "platform/http.h"

namespace rk::tests {

class ScriptedHttp final : public platform::Http {
 public:
  std::optional<std::string> body_of(std::string_view address,
                                     const platform::HttpTimeouts& timeouts) override {
    addresses.emplace_back(address);
    last_timeouts = timeouts;
    if (answers.empty()) return std::nullopt;
    std::optional<std::string> answer = answers.front();
    answers.erase(answers.begin());
    return answer;
  }

  std::vector<std::optional<std::string>> answers;
  std::vector<std::string> addresses;
  platform::HttpTimeouts last_timeouts;
};

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_SCRIPTED_HTTP_H_
