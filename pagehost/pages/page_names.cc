#include "pagehost/pages/page_names.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "value/script_error.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

// The constants of the database objects' type library that pages of this kind use.
struct Constant {
  std::string_view name;
  std::int32_t value;
};
constexpr std::array kConstants = std::to_array<Constant>({
    {"adOpenForwardOnly", 0},
    {"adOpenKeyset", 1},
    {"adOpenDynamic", 2},
    {"adOpenStatic", 3},
    {"adLockReadOnly", 1},
    {"adLockPessimistic", 2},
    {"adLockOptimistic", 3},
    {"adLockBatchOptimistic", 4},
    {"adUseServer", 2},
    {"adUseClient", 3},
    {"adStateClosed", 0},
    {"adStateOpen", 1},
    {"adCmdText", 1},
    {"adCmdTable", 2},
    {"adCmdStoredProc", 4},
    {"adCmdUnknown", 8},
    {"adCmdFile", 256},
    {"adCmdTableDirect", 512},
    {"adExecuteNoRecords", 128},
    {"adAsyncExecute", 16},
    {"adParamInput", 1},
    {"adParamOutput", 2},
    {"adParamInputOutput", 3},
    {"adParamReturnValue", 4},
    {"adEmpty", 0},
    {"adSmallInt", 2},
    {"adInteger", 3},
    {"adSingle", 4},
    {"adDouble", 5},
    {"adCurrency", 6},
    {"adDate", 7},
    {"adBSTR", 8},
    {"adBoolean", 11},
    {"adVariant", 12},
    {"adDecimal", 14},
    {"adTinyInt", 16},
    {"adUnsignedTinyInt", 17},
    {"adUnsignedSmallInt", 18},
    {"adUnsignedInt", 19},
    {"adBigInt", 20},
    {"adGUID", 72},
    {"adBinary", 128},
    {"adChar", 129},
    {"adWChar", 130},
    {"adNumeric", 131},
    {"adDBDate", 133},
    {"adDBTime", 134},
    {"adDBTimeStamp", 135},
    {"adVarChar", 200},
    {"adLongVarChar", 201},
    {"adVarWChar", 202},
    {"adLongVarWChar", 203},
    {"adVarBinary", 204},
    {"adLongVarBinary", 205},
    {"adTypeBinary", 1},
    {"adTypeText", 2},
    {"adReadAll", -1},
    {"adReadLine", -2},
    {"adWriteChar", 0},
    {"adWriteLine", 1},
    {"adSaveCreateNotExist", 1},
    {"adSaveCreateOverWrite", 2},
    {"adPersistADTG", 0},
    {"adPersistXML", 1},
    {"adModeUnknown", 0},
    {"adModeRead", 1},
    {"adModeWrite", 2},
    {"adModeReadWrite", 3},
    {"adSearchForward", 1},
    {"adSearchBackward", -1},
    {"adBookmarkCurrent", 0},
    {"adBookmarkFirst", 1},
    {"adBookmarkLast", 2},
    {"adFilterNone", 0},
    {"adFilterPendingRecords", 1},
    {"adAffectCurrent", 1},
    {"adAffectGroup", 2},
    {"adAffectAll", 3},
    {"adEditNone", 0},
    {"adEditInProgress", 1},
    {"adEditAdd", 2},
    {"adEditDelete", 4},
    {"adPosUnknown", -1},
    {"adPosBOF", -2},
    {"adPosEOF", -3},
    {"adCompareLessThan", 0},
    {"adCompareEqual", 1},
    {"adCompareGreaterThan", 2},
    {"adHoldRecords", 0x100},
    {"adMovePrevious", 0x200},
    {"adBookmark", 0x2000},
    {"adApproxPosition", 0x4000},
    {"adUpdateBatch", 0x10000},
    {"adFind", 0x80000},
    {"adAddNew", 0x1000400},
    {"adDelete", 0x1000800},
    {"adUpdate", 0x1008000},
    {"adFldMayDefer", 2},
    {"adFldUpdatable", 4},
    {"adFldFixed", 16},
    {"adFldIsNullable", 32},
    {"adFldMayBeNull", 64},
    {"adFldLong", 128},
    {"adCR", 13},
    {"adLF", 10},
    {"adCRLF", -1},
    {"adGetRowsRest", -1},
    {"adClipString", 2},
    {"adSchemaColumns", 4},
    {"adSchemaIndexes", 12},
    {"adSchemaTables", 20},
    {"adSchemaForeignKeys", 27},
    {"adSchemaPrimaryKeys", 28},
});

class LeftOutProcedure final : public Object {
 public:
  explicit LeftOutProcedure(std::string name) : name_(std::move(name)) {}
  std::string_view type_name() const override { return "Object"; }
  MemberId member(std::string_view) const override { return kNoMember; }
  Value invoke(MemberId, CallKind, Arguments) override {
    throw ScriptError(errors::kUndefinedProcedure.number,
                      "'" + name_ + "' stands in a script block of a language that is not served");
  }

 private:
  std::string name_;
};

}  // namespace

std::optional<Value> name_of_page(const CompiledPage& page, std::string_view name) {
  const std::string lower = lowered_ascii(name);
  if (std::find(page.left_out.begin(), page.left_out.end(), lower) != page.left_out.end()) {
    return Value::object(make_ref<LeftOutProcedure>(std::string(name)));
  }
  return page.has_type_library ? type_library_constant(name) : std::nullopt;
}

std::optional<Value> type_library_constant(std::string_view name) {
  for (const Constant& constant : kConstants) {
    if (equal_ignoring_case(constant.name, name)) return Value::long_integer(constant.value);
  }
  return std::nullopt;
}

}  // namespace rk::pagehost
