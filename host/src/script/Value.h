#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

namespace host::script {

/// The types of the script language, and None for "returned nothing".
enum class Type {
    None,
    Int,
    Float,
    String,
    Vector,
    Matrix,
    IntArray,
    FloatArray,
    StringArray,
    VectorArray
};

/// Name as error messages write it: "int", "string[]", "void" for None.
const char* typeName(Type type);
bool isArray(Type type);
Type elementType(Type type); ///< of an array type; any other type is returned as it is
Type arrayType(Type type);   ///< of a scalar type; None when there are no arrays of it

struct Vec3 {
    double x = 0, y = 0, z = 0;
    friend bool operator==(const Vec3& a, const Vec3& b) {
        return a.x == b.x && a.y == b.y && a.z == b.z;
    }
};

/// Fixed size, row after row.
struct MatrixValue {
    int rows = 0, columns = 0;
    std::vector<double> cells;
};

using Ints = std::vector<int>;
using Floats = std::vector<double>;
using Strings = std::vector<std::string>;
using Vectors = std::vector<Vec3>;

/// A value whose copies share one block until one of them is written to: scripts hand arrays
/// around far more often than they change them.
template <class T> class Shared {
public:
    explicit Shared(T value) : block_(std::make_shared<T>(std::move(value))) {}
    const T& read() const { return *block_; }
    T& write() {
        if (block_.use_count() > 1)
            block_ = std::make_shared<T>(*block_);
        return *block_;
    }

private:
    std::shared_ptr<T> block_;
};

/// An error of a script or of a command. Whoever consumes it reports it (`catch`, the top level);
/// a command throws it with the message alone, and the interpreter adds where it happened.
struct ScriptError : std::runtime_error {
    explicit ScriptError(const std::string& message) : std::runtime_error(message) {}

    std::string file;      ///< empty for text that came from no file
    int line = 0;          ///< from 1; 0 while not known
    bool reported = false; ///< already shown to the user (a command that displayed its own error)
    bool fatal = false;    ///< `catch` does not stop it: interruption, exhausted limits

    /// "file: X line N: message", "line N: message" or the message alone.
    std::string text() const;
};

/// One value of the script language; a plain value type.
class Value {
public:
    Value() = default;
    Value(int v) : data_(v) {}
    Value(bool v) : data_(v ? 1 : 0) {}
    Value(double v) : data_(v) {}
    Value(std::string v) : data_(std::move(v)) {}
    Value(const char* v) : data_(std::string(v)) {}
    Value(Vec3 v) : data_(v) {}
    Value(MatrixValue v) : data_(Shared(std::move(v))) {}
    Value(Ints v) : data_(Shared(std::move(v))) {}
    Value(Floats v) : data_(Shared(std::move(v))) {}
    Value(Strings v) : data_(Shared(std::move(v))) {}
    Value(Vectors v) : data_(Shared(std::move(v))) {}
    template <class T> Value(const T*) = delete; // no pointer turns into a bool

    /// The default of a type: 0, "", <<0,0,0>>, an empty array.
    static Value ofType(Type type);

    Type type() const { return static_cast<Type>(data_.index()); }
    bool isNone() const { return type() == Type::None; }
    bool isArray() const { return script::isArray(type()); }
    bool isNumber() const { return type() == Type::Int || type() == Type::Float; }
    bool isString() const { return type() == Type::String; }

    /// Elements of an array; 0 for None, 1 for anything else.
    std::size_t size() const;

    /// Conversions by the language's rules; ScriptError where it has none (an array to a scalar,
    /// None to a scalar). A string that is no number converts to what can be read at its
    /// beginning, else 0, and warns.
    int toInt() const;
    double toFloat() const;
    std::string toString() const;
    Vec3 toVector() const;
    bool toBool() const;
    Value convertedTo(Type type) const;

    /// As lists; a scalar becomes one element and None no elements.
    Ints toInts() const;
    Floats toFloats() const;
    Strings toStrings() const;

    /// What `print` writes and the result line shows: array elements separated by blanks.
    std::string display() const;

    /// Direct access; std::bad_variant_access when the type is another. Writing to an array leaves
    /// other copies of it as they are.
    template <class T> const T& get() const {
        if constexpr (isHeldDirectly<T>)
            return std::get<T>(data_);
        else
            return std::get<Shared<T>>(data_).read();
    }
    template <class T> T& get() {
        if constexpr (isHeldDirectly<T>)
            return std::get<T>(data_);
        else
            return std::get<Shared<T>>(data_).write();
    }
    template <class T> bool is() const {
        if constexpr (isHeldDirectly<T>)
            return std::holds_alternative<T>(data_);
        else
            return std::holds_alternative<Shared<T>>(data_);
    }
    template <class T> const T* getIf() const { return is<T>() ? &get<T>() : nullptr; }
    template <class T> T* getIf() { return is<T>() ? &get<T>() : nullptr; }

    /// Element of an array; the default of the element type when `index` is beyond the end.
    Value element(std::size_t index) const;

private:
    template <class T>
    static constexpr bool isHeldDirectly =
        std::is_same_v<T, int> || std::is_same_v<T, double> || std::is_same_v<T, std::string> ||
        std::is_same_v<T, Vec3>;

    std::variant<std::monostate, int, double, std::string, Vec3, Shared<MatrixValue>, Shared<Ints>,
                 Shared<Floats>, Shared<Strings>, Shared<Vectors>>
        data_;
};

/// A number as the language prints it: no trailing zeros, up to 10 significant digits.
std::string formatFloat(double value);

/// True when the whole text is a number (blanks around it allowed); `*value` receives it.
bool parseNumber(const std::string& text, double* value);

/// A literal with quotes and escapes that the language reads back as `text`.
std::string quoted(const std::string& text);

} // namespace host::script
