// What an answer is to a question.

#include "drawing/AcDbDatabase.h"
#include "editor/EditorInput.h"
#include "editor/SystemVariables.h"
#include "editor/command_pick.h"
#include "runtime/Host.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <numbers>

namespace veldrin {

namespace {

using Kind = Answer::Kind;
using Token = InputToken::Kind;

InputMeaning refuse(std::string& complaint, const char* text) {
    complaint = text;
    return InputMeaning::Refused;
}

void keepLastPoint(const AcGePoint3d& world) {
    AcGePoint3d point = world;
    if (const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase())
        point.transformBy(database->ucsToWorld().inverse());
    Host::current().variables().put("LASTPOINT", point);
}

std::optional<AcGePoint3d> pointOf(const InputToken& token) {
    const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (!database) return std::nullopt;
    if (token.kind == Token::Text) return parsePoint(token.text);
    const bool isPoint = token.kind == Token::Point || (token.kind == Token::Entity && token.hasPick);
    if (!isPoint) return std::nullopt;
    AcGePoint3d point = token.point;
    if (!token.hasElevation) point.z = database->header().elevation;
    return point.transformBy(database->ucsToWorld());
}

// The bits of initget that speak of numbers.
InputMeaning checkNumber(const Question& question, double value, std::string& complaint) {
    const bool noZero = (question.refusals & kRefuseZero) != 0;
    const bool noNegative = (question.refusals & kRefuseNegative) != 0;
    if (noZero && noNegative && value <= 0.0) return refuse(complaint, "Value must be positive and nonzero.");
    if (noZero && value == 0.0) return refuse(complaint, "Value must be nonzero.");
    if (noNegative && value < 0.0) return refuse(complaint, "Value must be positive.");
    return InputMeaning::Accepted;
}

InputMeaning numberMeaning(const Question& question, double value, Answer& answer, std::string& complaint) {
    answer.kind = Kind::Real;
    answer.real = value;
    return checkNumber(question, value, complaint);
}

InputMeaning integerMeaning(const Question& question, const InputToken& token, Answer& answer,
                            std::string& complaint) {
    static constexpr const char* wanted = "Requires an integer value or option keyword.";
    if (token.kind == Token::Number && token.isInteger)
        answer.integer = static_cast<int>(token.number);
    else if (token.kind == Token::Text) {
        const char* end = token.text.data() + token.text.size();
        const auto [stop, error] = std::from_chars(token.text.data(), end, answer.integer);
        if (error != std::errc() || stop != end) return refuse(complaint, wanted);
    } else
        return refuse(complaint, wanted);
    answer.kind = Kind::Integer;
    return checkNumber(question, answer.integer, complaint);
}

InputMeaning pointMeaning(const Question& question, const InputToken& token, Answer& answer,
                          std::string& complaint) {
    const auto point = pointOf(token);
    if (!point)
        return refuse(complaint,
                      question.keywords.empty() ? "Invalid point." : "Point or option keyword required.");
    answer.kind = Kind::Point;
    answer.point = *point;
    keepLastPoint(*point);
    return InputMeaning::Accepted;
}

InputMeaning distanceMeaning(const Question& question, const InputToken& token, Answer& answer,
                             std::string& complaint) {
    if (token.kind == Token::Number) return numberMeaning(question, token.number, answer, complaint);
    if (token.kind == Token::Text)
        if (const auto length = parseDistance(token.text))
            return numberMeaning(question, *length, answer, complaint);
    const auto point = pointOf(token);
    if (!point) return refuse(complaint, "Requires numeric distance, second point, or option keyword.");
    answer.point = *point;
    keepLastPoint(*point);
    if (!question.base) return InputMeaning::FirstPoint;
    AcGeVector3d between = *point - *question.base;
    if (question.refusals & kFlatDistance) between.z = 0.0;
    return numberMeaning(question, between.length(), answer, complaint);
}

// Angles that are typed count from ANGBASE in the sense of ANGDIR; those shown by points are measured in the
// user coordinate system.
double measuredAngle(const Question& question, const AcGePoint3d& to) {
    AcGeVector3d direction = to - *question.base;
    SystemVariables& variables = Host::current().variables();
    if (const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase())
        direction.transformBy(database->ucsToWorld().inverse());
    double angle = direction.convert2d().angle();
    if (question.want == Want::Angle) angle -= variables.real("ANGBASE");
    const double fullTurn = 2.0 * std::numbers::pi;
    angle = std::fmod(angle, fullTurn);
    return angle < 0.0 ? angle + fullTurn : angle;
}

double typedAngle(const Question& question, double angle) {
    SystemVariables& variables = Host::current().variables();
    if (variables.integer("ANGDIR") == 1) angle = -angle;
    return question.want == Want::Orientation ? angle + variables.real("ANGBASE") : angle;
}

InputMeaning angleMeaning(const Question& question, const InputToken& token, Answer& answer,
                          std::string& complaint) {
    std::optional<double> typed;
    if (token.kind == Token::Number) typed = token.number * std::numbers::pi / 180.0;
    if (token.kind == Token::Text) {
        const bool marked = !token.text.empty() && token.text.front() == '<';
        typed = parseAngle(std::string_view(token.text).substr(marked ? 1 : 0));
    }
    if (typed) return numberMeaning(question, typedAngle(question, *typed), answer, complaint);
    const auto point = pointOf(token);
    if (!point) return refuse(complaint, "Requires valid numeric angle, second point, or option keyword.");
    answer.point = *point;
    keepLastPoint(*point);
    if (!question.base) return InputMeaning::FirstPoint;
    return numberMeaning(question, measuredAngle(question, *point), answer, complaint);
}

InputMeaning realMeaning(const Question& question, const InputToken& token, Answer& answer,
                         std::string& complaint) {
    if (token.kind == Token::Number) return numberMeaning(question, token.number, answer, complaint);
    if (token.kind == Token::Text)
        if (const auto value = parseDistance(token.text))
            return numberMeaning(question, *value, answer, complaint);
    return refuse(complaint, "Requires numeric value.");
}

InputMeaning entityMeaning(const Question& question, const InputToken& token, Answer& answer,
                           std::string& complaint) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    answer.kind = Kind::Entity;
    answer.entity = token.entity;
    if (const auto point = pointOf(token)) answer.point = *point;
    if (token.kind == Token::Entity) return InputMeaning::Accepted;
    const auto point = pointOf(token);
    if (!point || !database) return refuse(complaint, "Invalid selection.");
    answer.point = *point;
    answer.entity = entityAt(*database, *point);
    const bool counts = !answer.entity.isNull() || (question.refusals & kAcceptMiss) != 0;
    return counts ? InputMeaning::Accepted : refuse(complaint, "No object found.");
}

// One answer to "Select objects:".
InputMeaning selectionMeaning(const InputToken& token, Answer& answer, std::string& complaint) {
    if (token.kind == Token::Entity) {
        answer.kind = Kind::Selection;
        answer.selection = {token.entity};
        return InputMeaning::Accepted;
    }
    if (token.kind == Token::Selection) {
        answer.kind = Kind::Selection;
        answer.selection = token.selection;
        return InputMeaning::Accepted;
    }
    const auto point = pointOf(token);
    if (!point)
        return refuse(complaint,
                      "*Invalid selection*\nExpects a point or Window/Last/Crossing/BOX/ALL/Fence/WPolygon/"
                      "CPolygon/Group/Add/Remove/Multiple/Previous/Undo/AUto/SIngle");
    answer.kind = Kind::Point;
    answer.point = *point;
    return InputMeaning::Accepted;
}

InputMeaning textMeaning(const InputToken& token, Answer& answer) {
    answer.kind = Kind::Text;
    answer.text = token.echo();
    return InputMeaning::Accepted;
}

InputMeaning valueMeaning(const Question& question, const InputToken& token, Answer& answer,
                          std::string& complaint) {
    switch (question.want) {
    case Want::String:
    case Want::Line: return textMeaning(token, answer);
    case Want::Keyword: return refuse(complaint, "Invalid option keyword.");
    case Want::Integer: return integerMeaning(question, token, answer, complaint);
    case Want::Real: return realMeaning(question, token, answer, complaint);
    case Want::Point:
    case Want::Corner: return pointMeaning(question, token, answer, complaint);
    case Want::Distance: return distanceMeaning(question, token, answer, complaint);
    case Want::Angle:
    case Want::Orientation: return angleMeaning(question, token, answer, complaint);
    case Want::Entity: return entityMeaning(question, token, answer, complaint);
    case Want::Selection: return selectionMeaning(token, answer, complaint);
    }
    return InputMeaning::Refused;
}

} // namespace

InputMeaning interpretInput(const Question& question, const InputToken& token, Answer& answer,
                            std::string& complaint) {
    answer = Answer();
    if (token.kind == Token::Text) {
        if (token.text.empty()) {
            if (question.refusals & kRefuseNull) return refuse(complaint, "");
            return InputMeaning::Accepted;
        }
        answer.text = matchKeyword(token.text, question.keywords);
        if (!answer.text.empty()) {
            answer.kind = Kind::Keyword;
            return InputMeaning::Accepted;
        }
    }
    const InputMeaning meaning = valueMeaning(question, token, answer, complaint);
    const bool isTyped = token.kind == Token::Text || token.kind == Token::Number;
    const bool takesText = (question.refusals & kArbitraryText) != 0 && isTyped;
    return meaning == InputMeaning::Refused && takesText ? textMeaning(token, answer) : meaning;
}

} // namespace veldrin
