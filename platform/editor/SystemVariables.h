#pragma once

#include "geometry/AcGePoint3d.h"
#include "lisp/Value.h"
#include "runtime/VeldrinApi.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace veldrin {

using VariableValue = std::variant<std::int32_t, double, std::string, AcGePoint2d, AcGePoint3d>;

// Values of variables that are kept beside a drawing or for the time of the host, by name in upper case.
using VariableStore = std::map<std::string, VariableValue, std::less<>>;

struct VariableRow;

// The system variables: a table says of each what kind of value it has, where it is kept and who may change
// it. Names have no case. Those of a drawing are the current document's; without one they are unknown.
class VELDRIN_API SystemVariables {
public:
    enum class Result { Ok, Unknown, ReadOnly, WrongType, OutOfRange, NotFound };

    SystemVariables();

    std::optional<VariableValue> get(std::string_view name) const;
    // An integer is taken for a real, a whole real for an integer, a point of two or three numbers for
    // either. NotFound: the value names a layer, linetype or style that the drawing does not have.
    Result set(std::string_view name, const VariableValue& value);
    // For the host itself: sets what is kept (not what is computed), read-only or not.
    void put(std::string_view name, VariableValue value);

    // As Lisp sees them; nil for what is unknown, and WrongType for what no variable can be.
    lisp::Value getLisp(std::string_view name) const;
    Result setLisp(std::string_view name, const lisp::Value& value);

    std::int32_t integer(std::string_view name) const; // 0 when it is none
    double real(std::string_view name) const;
    std::string text(std::string_view name) const;

    bool exists(std::string_view name) const;
    std::vector<std::string> names() const; // in order, upper case

    // Sets a variable for as long as the object lives, and puts it back.
    class VELDRIN_API Scope {
    public:
        [[nodiscard]] Scope(std::string_view name, VariableValue value);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        std::string m_name;
        std::optional<VariableValue> m_before;
    };

private:
    VariableStore* storeOf(const VariableRow& row) const;

    mutable VariableStore m_session;
};

// One line that says why a setting was refused: `Variable "CLAYER" rejected: "X" is not in the drawing`.
VELDRIN_API std::string describeRefusal(std::string_view name, const VariableValue& value,
                                        SystemVariables::Result result);

} // namespace veldrin
