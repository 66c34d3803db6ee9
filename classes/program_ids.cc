#include "classes/program_ids.h"

#include <array>

#include "classes/class_ini_file.h"
#include "classes/host.h"
#include "classes/site_main.h"

namespace rk::classes {

namespace {

template <class Class>
Ref<Object> make(const Equipment& equipment) {
  return make_ref<Class>(equipment);
}

constexpr std::array kProgramIds{
    ProgramId{"Rkclient.SiteMain", make<SiteMain>},
    ProgramId{"Rkclient.Host", make<Host>},
    ProgramId{"Rkclient.classIniFile", make<ClassIniFile>},
};

}  // namespace

std::span<const ProgramId> program_ids() {
  return kProgramIds;
}

}  // namespace rk::classes
