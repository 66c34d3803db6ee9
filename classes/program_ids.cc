#include "classes/program_ids.h"

#include <array>

#include "classes/site_main.h"

namespace rk::classes {

namespace {

template <class Class>
Ref<Object> make(const Equipment& equipment) {
  return make_ref<Class>(equipment);
}

constexpr std::array kProgramIds{
    ProgramId{"Rkclient.SiteMain", make<SiteMain>},
};

}  // namespace

std::span<const ProgramId> program_ids() {
  return kProgramIds;
}

}  // namespace rk::classes
