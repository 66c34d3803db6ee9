// The one exception that ends an operation: what a page sees as Err.Number, Err.Source and
// Err.Description. All numbers and texts that this system itself raises stand in one list here;
// database engines bring words of their own under the numbers of the second list.
#ifndef RK_VALUE_SCRIPT_ERROR_H_
#define RK_VALUE_SCRIPT_ERROR_H_

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace rk {

struct KnownError {
  std::int32_t number;
  std::string_view text;
  std::string_view source = {};  // Err.Source; the page language's own name where empty
};

namespace errors {

inline constexpr KnownError kInvalidCall{5, "Invalid procedure call or argument"};
inline constexpr KnownError kOverflow{6, "Overflow"};
inline constexpr KnownError kOutOfMemory{7, "Out of memory"};
inline constexpr KnownError kSubscriptOutOfRange{9, "Subscript out of range"};
inline constexpr KnownError kArrayFixed{10, "This array is fixed or temporarily locked"};
inline constexpr KnownError kDivisionByZero{11, "Division by zero"};
inline constexpr KnownError kTypeMismatch{13, "Type mismatch"};
inline constexpr KnownError kOutOfStringSpace{14, "Out of string space"};
inline constexpr KnownError kOutOfStack{28, "Out of stack space"};
inline constexpr KnownError kUndefinedProcedure{35, "Sub or Function not defined"};
inline constexpr KnownError kBadFileName{52, "Bad file name or number"};
inline constexpr KnownError kFileNotFound{53, "File not found"};
inline constexpr KnownError kBadFileMode{54, "Bad file mode"};
inline constexpr KnownError kFileAlreadyOpen{55, "File already open"};
inline constexpr KnownError kDeviceError{57, "Device I/O error"};
inline constexpr KnownError kFileExists{58, "File already exists"};
inline constexpr KnownError kDiskFull{61, "Disk full"};
inline constexpr KnownError kInputPastEnd{62, "Input past end of file"};
inline constexpr KnownError kPermissionDenied{70, "Permission denied"};
inline constexpr KnownError kPathNotFound{76, "Path not found"};
inline constexpr KnownError kObjectNotSet{91, "Object variable not set"};
inline constexpr KnownError kForLoopNotInitialized{92, "For loop not initialized"};
inline constexpr KnownError kInvalidNull{94, "Invalid use of Null"};
inline constexpr KnownError kObjectRequired{424, "Object required"};
inline constexpr KnownError kCannotCreateObject{429, "ActiveX component can't create object"};
inline constexpr KnownError kNoSuchMember{438, "Object doesn't support this property or method"};
inline constexpr KnownError kActionNotSupported{445, "Object doesn't support this action"};
inline constexpr KnownError kArgumentNotOptional{449, "Argument not optional"};
inline constexpr KnownError kWrongArgumentCount{
    450, "Wrong number of arguments or invalid property assignment"};
inline constexpr KnownError kNotACollection{451, "Object not a collection"};
inline constexpr KnownError kKeyInUse{457,
                                      "This key is already associated with an element of this "
                                      "collection"};
inline constexpr KnownError kUndefinedVariable{500, "Variable is undefined"};
inline constexpr KnownError kIllegalAssignment{501, "Illegal assignment"};
inline constexpr KnownError kUnqualifiedReference{505, "Invalid or unqualified reference"};
inline constexpr KnownError kClassNotDefined{506, "Class not defined"};
inline constexpr KnownError kElementNotFound{32811, "Element not found"};
inline constexpr KnownError kInvalidClassString{-2147221005, "Invalid class string"};

// Err.Source of what a database or a record set refuses.
inline constexpr std::string_view kDatabaseSource = "Database error";

// Numbers under which database errors reach a page; the text is the engine's where it gave one.
inline constexpr std::int32_t kSqlSyntax = -2147217900;         // 80040E14
inline constexpr std::int32_t kSqlMissingTable = -2147217865;   // 80040E37
inline constexpr std::int32_t kSqlMissingColumn = -2147217904;  // 80040E10
inline constexpr std::int32_t kSqlFailure = -2147467259;        // 80004005
inline constexpr std::int32_t kSqlTimeout = -2147217871;        // 80040E31

inline constexpr KnownError kInvalidArgument{
    3001,
    "Arguments are of the wrong type, are out of acceptable range, or are in conflict with one "
    "another.",
    kDatabaseSource};
inline constexpr KnownError kNoCurrentRecord{
    3021,
    "Either BOF or EOF is True, or the current record has been deleted. Requested operation "
    "requires a current record.",
    kDatabaseSource};
inline constexpr KnownError kNotAllowedInContext{3219, "Operation is not allowed in this context.",
                                                 kDatabaseSource};
inline constexpr KnownError kFeatureNotAvailable{
    3251,
    "Current Recordset does not support updating or moving that way. This may be a "
    "limitation of its cursor or lock type.",
    kDatabaseSource};
inline constexpr KnownError kItemNotFound{
    3265, "Item cannot be found in the collection corresponding to the requested name or ordinal.",
    kDatabaseSource};
inline constexpr KnownError kObjectClosed{
    3704, "Operation is not allowed when the object is closed.", kDatabaseSource};
inline constexpr KnownError kObjectOpen{3705, "Operation is not allowed when the object is open.",
                                        kDatabaseSource};

// Of the services.
inline constexpr KnownError kInvalidPropertyValue{380, "Invalid property value"};
inline constexpr KnownError kNotConnected{40006, "Wrong protocol or connection state"};
inline constexpr std::int32_t kNotConfigured = -2147220991;  // 80040201; the text names the setting

}  // namespace errors

class ScriptError : public std::exception {
 public:
  ScriptError(std::int32_t number, std::string description, std::string source = {})
      : number_(number), description_(std::move(description)), source_(std::move(source)) {}
  explicit ScriptError(const KnownError& known)
      : ScriptError(known.number, std::string(known.text), std::string(known.source)) {}

  std::int32_t number() const noexcept { return number_; }
  // UTF-8.
  const std::string& description() const noexcept { return description_; }
  // UTF-8; empty where the page language fills in its own name.
  const std::string& source() const noexcept { return source_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  std::int32_t number_;
  std::string description_;
  std::string source_;
};

[[noreturn]] inline void raise(const KnownError& known) {
  throw ScriptError(known);
}
// A number of the second list with the engine's words.
[[noreturn]] inline void raise_database_error(std::int32_t number, std::string words) {
  throw ScriptError(number, std::move(words), std::string(errors::kDatabaseSource));
}

}  // namespace rk

#endif  // RK_VALUE_SCRIPT_ERROR_H_
