#pragma once

#include "drawing/AcDbObjectId.h"
#include "editor/CommandTask.h"
#include "geometry/AcGePoint3d.h"
#include "runtime/VeldrinApi.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veldrin {

// One answer as it comes from a source: an argument of (command ...), a line typed at the terminal, or
// something picked in a window. What it means depends on the question that it meets.
struct InputToken {
    enum class Kind { Text, Number, Point, Entity, Selection, Pause };
    Kind kind = Kind::Text;
    std::string text;                    // Text; empty is Enter
    double number = 0.0;                 // Number
    bool isInteger = false;              // Number
    AcGePoint3d point;                   // Point, in the user coordinate system; Entity: where it was picked
    bool hasElevation = false;           // Point: three coordinates were given
    bool hasPick = false;                // Entity: the point is meaningful
    AcDbObjectId entity;                 // Entity
    std::vector<AcDbObjectId> selection; // Selection

    static InputToken ofText(std::string text);
    static InputToken ofPause();
    std::string echo() const; // as the command line shows it
};

enum class Want {
    String,
    Line,
    Keyword,
    Integer,
    Real,
    Point,
    Corner,
    Distance,
    Angle,
    Orientation,
    Entity,
    Selection
};

// What a caller refuses, by the bits of the Lisp function initget.
enum InputRefusal : int {
    kRefuseNull = 1,
    kRefuseZero = 2,
    kRefuseNegative = 4,
    kIgnoreLimits = 8,
    kFlatDistance = 64,    // distances between points in plan
    kArbitraryText = 128,  // text that is no answer is given as it is
    kAcceptMiss = 0x10000, // a point at which there is no entity is an answer
};

// A question to whoever gives input. Texts must live until it is answered.
struct Question {
    Want want = Want::String;
    std::string_view prompt;
    std::string_view keywords; // "Close Undo": capitals may be typed alone; "LType,LT" gives a short form
    int refusals = 0;
    const AcGePoint3d* base = nullptr; // in the world, for points, distances and angles
};

struct Answer {
    enum class Kind { None, Keyword, Text, Integer, Real, Point, Entity, Selection };
    Kind kind = Kind::None;
    std::string text; // the keyword as the question spells it, or the text
    int integer = 0;
    double real = 0.0; // distances in drawing units, angles in radians
    AcGePoint3d point; // in the world; Entity: where it was picked
    AcDbObjectId entity;
    std::vector<AcDbObjectId> selection;

    AcGePoint3d firstPoint; // of a distance or an angle that two points gave
    bool isCancelled = false;

    bool isNone() const { return kind == Kind::None; }
    bool isKeyword(std::string_view keyword) const { return kind == Kind::Keyword && text == keyword; }
};

// Escape, a break, or the end of all input: ends the command that asked.
struct InputCancelled {};

// What an answer is to a question. A distance or an angle may be given by two points; after the first one the
// question is asked again, from there.
enum class InputMeaning { Accepted, Refused, FirstPoint };

// Turns an answer as it was given into what the question wants; why it was refused goes to `complaint`. Reads
// and keeps LASTPOINT.
VELDRIN_API InputMeaning interpretInput(const Question& question, const InputToken& token, Answer& answer,
                                        std::string& complaint);

// A point in the notations of the command line ("1,2" "@3<45" "*1,2"), in the world; none when it is no
// point.
VELDRIN_API std::optional<AcGePoint3d> parsePoint(std::string_view text);
// A length, in decimals, feet and inches or fractions; none when it is no number.
VELDRIN_API std::optional<double> parseDistance(std::string_view text);
// An angle in the drawing's angle units or as it is marked, in radians.
VELDRIN_API std::optional<double> parseAngle(std::string_view text);
// The keyword of the list that a text means; empty for none.
VELDRIN_API std::string matchKeyword(std::string_view text, std::string_view keywords);

// Where commands and the Lisp functions of the get family read. Answers come from a queue, which (command
// ...) fills, else from the user. A command's question waits until `step` hands it an answer.
class VELDRIN_API EditorInput {
public:
    // Shows a prompt and gives the line typed; none at Escape and at the end of all input.
    using LineReader = std::function<std::optional<std::string>(const std::string& prompt)>;

    explicit EditorInput(LineReader reader);
    EditorInput(const EditorInput&) = delete;
    EditorInput& operator=(const EditorInput&) = delete;

    // A question of a command. Awaiting it gives the answer, and throws InputCancelled.
    class Awaiter {
    public:
        Awaiter(EditorInput& input, const Question& question) : m_input(input), m_question(question) {}
        bool await_ready() const { return false; }
        void await_suspend(std::coroutine_handle<> asking) { m_input.wait({asking, &m_question, &m_answer}); }
        Answer await_resume() {
            if (m_answer.isCancelled) throw InputCancelled();
            return std::move(m_answer);
        }

    private:
        EditorInput& m_input;
        Question m_question;
        Answer m_answer;
    };
    Awaiter ask(const Question& question) { return Awaiter(*this, question); }
    Awaiter point(std::string_view prompt, const AcGePoint3d* base = nullptr,
                  std::string_view keywords = {}) {
        return ask({Want::Point, prompt, keywords, 0, base});
    }
    Awaiter distance(std::string_view prompt, const AcGePoint3d* base = nullptr,
                     std::string_view keywords = {}) {
        return ask({Want::Distance, prompt, keywords, 0, base});
    }
    Awaiter angle(std::string_view prompt, const AcGePoint3d* base = nullptr,
                  std::string_view keywords = {}) {
        return ask({Want::Angle, prompt, keywords, 0, base});
    }
    Awaiter string(std::string_view prompt) { return ask({Want::String, prompt, {}, 0, nullptr}); }
    Awaiter keyword(std::string_view prompt, std::string_view keywords) {
        return ask({Want::Keyword, prompt, keywords, 0, nullptr});
    }

    // The next key of what the user types, 13 for Enter. Throws InputCancelled at the end of all input.
    int nextKey();
    // Asks on the spot, as the Lisp functions do: the queue first, then the user. Throws InputCancelled.
    Answer askNow(const Question& question);

    // What Lisp's initget has set for the next question of its get functions.
    struct Rules {
        int refusals = 0;
        std::string keywords;
    };
    void setRules(Rules rules) { m_rules = std::move(rules); }
    Rules takeRules() { return std::exchange(m_rules, Rules()); }

    // The answers of one (command ...), or of a Lisp command that it runs, and the questions that wait for
    // them: a command's, above it that of one that runs inside.
    struct Waiting {
        std::coroutine_handle<> asking;
        Question* question;
        Answer* answer;
    };
    struct Session {
        std::deque<InputToken> tokens;
        std::vector<Waiting> waiting;
        bool asksUser = false; // what is not in the queue
    };
    Session& session() { return *m_session; }
    // Makes another session the current one and gives the one before.
    Session* exchangeSession(Session* session) { return std::exchange(m_session, session); }

    // Hands the next answer to the question that waits, and goes on with its command if it fits. False when
    // nothing waits or no answer is there.
    bool step();
    // The command that waits goes on by being cancelled.
    void cancelWaiting();

private:
    friend class Awaiter;
    void wait(const Waiting& waiting) { m_session->waiting.push_back(waiting); }
    bool nextToken(const Question& question, bool mayAskUser, InputToken& token);
    static bool accept(Question& question, const InputToken& token, Answer& answer);

    LineReader m_reader;
    std::deque<int> m_keys; // of a line that was typed, not read yet
    Rules m_rules;
    Session m_ownSession;
    Session* m_session = &m_ownSession;
};

} // namespace veldrin
