// Save of a record set, and Open of one that was saved.
#include <utility>

#include "pagehost/components/command_object.h"
#include "pagehost/components/command_texts.h"
#include "pagehost/components/file_paths.h"
#include "pagehost/components/recordset_object.h"
#include "pagehost/components/saved_rows.h"
#include "pagehost/components/stream_object.h"
#include "pagehost/components/xml_document.h"
#include "value/conversions.h"

namespace rk::pagehost {
namespace {

constexpr std::int32_t kSourceIsFile = 256;  // of Open's options
constexpr std::int32_t kFormatXml = 1;       // the other one, 0, is written the same way

const RowFiles& saving(const AdoServices& services) {
  if (!services.files) raise(errors::kFeatureNotAvailable);
  return *services.files;
}

}  // namespace

// Save(target, format): the rows that the filter shows, into a new file, the file of the last Save
// where none is named, a stream, a Response or a document. Goes to the first row.
Value RecordsetObject::save(const Call& call) {
  const std::int32_t format = call.number_or(1, 0);
  if (format != 0 && format != kFormatXml) raise(errors::kInvalidArgument);
  rows();
  const RowFiles& with = saving(services_);
  const Value target = call.has(0) ? call.at(0) : Value::text(saved_in_);
  auto document = make_ref<XmlDocumentObject>(with.xml);
  document->tree()->keep_white_space = true;
  document->load_text(saved_text(*MemoryRows::of(rows(), memory_)));
  // Such as a control character, which no XML text can hold.
  const XmlProblem& problem = document->tree()->problem;
  if (problem.number != 0) raise_database_error(errors::kSqlFailure, problem.reason);
  if (!rows().bof() || !rows().eof()) rows().move_first();
  settle();
  if (target.is_object() && target.as_object() != nullptr) {
    if (auto* stream = dynamic_cast<StreamObject*>(target.as_object())) {
      stream->take_text(document->tree()->text());
    } else {
      document->save_into(target);
    }
    return {};
  }
  const std::string path = to_text(target).string();
  if (path.empty()) raise(errors::kInvalidArgument);
  const std::string file = path_in_site(with.xml.site_root, path);
  if (call.has(0) && with.xml.system.files->find(file)) raise(errors::kFileExists);
  document->save_into(Value::text(file));
  saved_in_ = file;
  return {};
}

// An object or bytes that hold rows, or the name of a file: where the options say so, or where
// there is no connection and the file is there or the text is a path at least.
bool RecordsetObject::opens_saved(const Value& from, std::int32_t options) {
  if (from.is_object()) {
    const Object* object = from.as_object();
    return object != nullptr && dynamic_cast<const CommandObject*>(object) == nullptr &&
           (dynamic_cast<const StreamObject*>(object) != nullptr ||
            dynamic_cast<const XmlDocumentObject*>(object) != nullptr);
  }
  if (from.is_array()) return true;
  if (!from.is_text() || from.as_view().empty()) return false;
  if (options > 0 && (options & kSourceIsFile) != 0) return true;
  if (connection_ && connection_->is_of_files()) return true;
  if (connection_ || !services_.files || begins_as_select(from.as_view())) return false;
  if (from.as_view().find_first_of("/\\") != std::string_view::npos) return true;
  const XmlServices& with = services_.files->xml;
  return with.system.files->find(path_in_site(with.site_root, from.as_view())).has_value();
}

void RecordsetObject::open_saved(const Value& from) {
  const RowFiles& with = saving(services_);
  std::string file;
  if (from.is_text()) {
    file = path_in_site(with.xml.site_root, from.as_view());
    if (!with.xml.system.files->find(file)) raise(errors::kFileNotFound);
  }
  auto document = make_ref<XmlDocumentObject>(with.xml);
  if (!document->load_from(from.is_text() ? Value::text(file) : from)) {
    raise_database_error(errors::kSqlFailure, "The source holds no saved record set: " +
                                                  document->tree()->problem.reason);
  }
  auto read = rows_of_saved(*document->tree()->document);
  if (connection_ && connection_->is_of_files()) belong_to({});
  command_ = {};
  source_ = {};
  if (lock_type_ == kLockBatch) read->begin_batch();
  take(std::move(read));
  cursor_location_ = kUseClient;
  saved_in_ = std::move(file);
  settle();
}

}  // namespace rk::pagehost
