// The translator's two stages: the key of a text that is kept (asked of every text that a page
// sends), and the translation of one that is not.
#include <benchmark/benchmark.h>

#include <string>
#include <string_view>

#include "jetsql/translate.h"

namespace {

using rk::jetsql::read_shape;
using rk::jetsql::Schema;
using rk::jetsql::Shape;
using rk::jetsql::Table;
using rk::jetsql::translate;
using rk::jetsql::Translation;
using rk::jetsql::Type;

constexpr std::string_view kList =
    "Select Top 20 "
    "[Id],[HostSpace],[HostName],[Scriptmaps],[MaxConnections],[MaxBandwidth],[Price],"
    "[MonPrice],[freeMail],[freeMsSql],[freeMySql] From [Rk_HostList] Where [ProClass]=5 And "
    "[AgentS]=1 "
    "And [HostName]<>'none' Order By [Price] Desc";

constexpr std::string_view kOverride =
    "Select [AgentSetName],[Price],[MonPrice] From [Rk_AgentPriceSet] Where [AgentUser]='blue' And "
    "[MastId]=17 And [PriceType]='Host'";

class Storefront : public Schema {
 public:
  Storefront() {
    plans_.name = "Rk_HostList";
    for (const char* name : {"HostSpace", "MaxConnections", "MaxBandwidth", "Price", "MonPrice",
                             "freeMail", "freeMsSql", "freeMySql", "ProClass", "AgentS"}) {
      plans_.columns.push_back({name, Type::Integer, false, false});
    }
    plans_.columns.push_back({"Id", Type::Integer, false, true});
    plans_.columns.push_back({"HostName", Type::Text, true, false});
    plans_.columns.push_back({"Scriptmaps", Type::Text, true, false});
  }
  const Table* table(std::string_view) const override { return &plans_; }

 private:
  Table plans_;
};

void JetShapeOfAList(benchmark::State& state) {
  Shape shape;
  for (auto _ : state) {
    read_shape(kList, shape);
    benchmark::DoNotOptimize(shape.key.data());
  }
}
BENCHMARK(JetShapeOfAList);

void JetShapeOfAnOverride(benchmark::State& state) {
  Shape shape;
  for (auto _ : state) {
    read_shape(kOverride, shape);
    benchmark::DoNotOptimize(shape.key.data());
  }
}
BENCHMARK(JetShapeOfAnOverride);

void JetTranslationOfAList(benchmark::State& state) {
  const Storefront storefront;
  for (auto _ : state) {
    const Translation translation = translate(kList, storefront);
    benchmark::DoNotOptimize(translation.statements.data());
  }
}
BENCHMARK(JetTranslationOfAList);

}  // namespace
