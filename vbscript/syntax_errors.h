// The compile errors of the language: numbers and texts in one list.
#ifndef RK_VBSCRIPT_SYNTAX_ERRORS_H_
#define RK_VBSCRIPT_SYNTAX_ERRORS_H_

#include "value/script_error.h"

namespace rk::vbscript::syntax {

inline constexpr KnownError kOutOfMemory{1001, "Out of memory"};
inline constexpr KnownError kSyntaxError{1002, "Syntax error"};
inline constexpr KnownError kExpectedColon{1003, "Expected ':'"};
inline constexpr KnownError kExpectedOpen{1005, "Expected '('"};
inline constexpr KnownError kExpectedClose{1006, "Expected ')'"};
inline constexpr KnownError kExpectedBracket{1007, "Expected ']'"};
inline constexpr KnownError kExpectedIdentifier{1010, "Expected identifier"};
inline constexpr KnownError kExpectedEquals{1011, "Expected '='"};
inline constexpr KnownError kExpectedIf{1012, "Expected 'If'"};
inline constexpr KnownError kExpectedTo{1013, "Expected 'To'"};
inline constexpr KnownError kExpectedEnd{1014, "Expected 'End'"};
inline constexpr KnownError kExpectedFunction{1015, "Expected 'Function'"};
inline constexpr KnownError kExpectedSub{1016, "Expected 'Sub'"};
inline constexpr KnownError kExpectedThen{1017, "Expected 'Then'"};
inline constexpr KnownError kExpectedWend{1018, "Expected 'Wend'"};
inline constexpr KnownError kExpectedLoop{1019, "Expected 'Loop'"};
inline constexpr KnownError kExpectedNext{1020, "Expected 'Next'"};
inline constexpr KnownError kExpectedCase{1021, "Expected 'Case'"};
inline constexpr KnownError kExpectedSelect{1022, "Expected 'Select'"};
inline constexpr KnownError kExpectedExpression{1023, "Expected expression"};
inline constexpr KnownError kExpectedStatement{1024, "Expected statement"};
inline constexpr KnownError kExpectedEndOfStatement{1025, "Expected end of statement"};
inline constexpr KnownError kExpectedInteger{1026, "Expected integer constant"};
inline constexpr KnownError kExpectedWhileOrUntil{1027, "Expected 'While' or 'Until'"};
inline constexpr KnownError kExpectedWhileUntilOrEnd{
    1028, "Expected 'While', 'Until' or end of statement"};
inline constexpr KnownError kExpectedWith{1029, "Expected 'With'"};
inline constexpr KnownError kIdentifierTooLong{1030, "Identifier too long"};
inline constexpr KnownError kInvalidNumber{1031, "Invalid number"};
inline constexpr KnownError kInvalidCharacter{1032, "Invalid character"};
inline constexpr KnownError kUnterminatedString{1033, "Unterminated string constant"};
inline constexpr KnownError kInvalidMe{1037, "Invalid use of 'Me' keyword"};
inline constexpr KnownError kLoopWithoutDo{1038, "'loop' without 'do'"};
inline constexpr KnownError kInvalidExit{1039, "Invalid 'exit' statement"};
inline constexpr KnownError kInvalidForVariable{1040, "Invalid 'for' loop control variable"};
inline constexpr KnownError kNameRedefined{1041, "Name redefined"};
inline constexpr KnownError kFirstOnLine{1042, "Must be first statement on the line"};
inline constexpr KnownError kNoParentheses{1044, "Cannot use parentheses when calling a Sub"};
inline constexpr KnownError kExpectedLiteral{1045, "Expected literal constant"};
inline constexpr KnownError kExpectedIn{1046, "Expected 'In'"};
inline constexpr KnownError kExpectedClass{1047, "Expected 'Class'"};
inline constexpr KnownError kInsideClass{1048, "Must be defined inside a Class"};
inline constexpr KnownError kExpectedLetSetGet{
    1049, "Expected Let or Set or Get in property declaration"};
inline constexpr KnownError kExpectedProperty{1050, "Expected 'Property'"};
inline constexpr KnownError kInconsistentArguments{
    1051, "Number of arguments must be consistent across properties specification"};
inline constexpr KnownError kManyDefaults{
    1052, "Cannot have multiple default property/method in a Class"};
inline constexpr KnownError kInitializeArguments{
    1053, "Class initialize or terminate do not have arguments"};
inline constexpr KnownError kPropertyArgument{
    1054, "Property Set or Let must have at least one argument"};
inline constexpr KnownError kUnexpectedNext{1055, "Unexpected 'Next'"};
inline constexpr KnownError kDefaultPlace{
    1056, "'Default' can be specified only on 'Property' or 'Function' or 'Sub'"};
inline constexpr KnownError kDefaultPublic{1057,
                                           "'Default' specification must also specify 'Public'"};
inline constexpr KnownError kDefaultGet{1058,
                                        "'Default' specification can only be on Property Get"};

}  // namespace rk::vbscript::syntax

#endif  // RK_VBSCRIPT_SYNTAX_ERRORS_H_
