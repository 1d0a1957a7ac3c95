/// \file
/// Expressions of sizes: names, numbers, arithmetic, lists, and relations between them.
///
/// The parts of an expression are expressions of a table, and told by their ids there. An object of
/// these classes is a key to the table: getId() finds the equal expression, or puts a copy there.
/// A part that is given as an object is put into the table when the whole is made.
#pragma once

#include <fnd/export.h>
#include <symbolicexpr/table.h>

#include <array>
#include <cstdint>
#include <memory_resource>
#include <string>
#include <vector>

namespace TV {

/// What an expression is.
enum SymbolicOp : std::uint32_t {
    SymbolicNameOp,
    SymbolicNumberOp,
    SymbolicUnaryMinusOp,
    SymbolicPlusOp,
    SymbolicMinusOp,
    SymbolicMultiplyOp,
    SymbolicDivideOp,
    SymbolicEqualOp,
    SymbolicGreaterThanOp,
    SymbolicNDOp
};

class TV_PLATFORM_API SymbolicExpr {
  public:
    virtual ~SymbolicExpr();

    /// The id of the expression in the table that equals this one; if there is none, a copy of this
    /// one is put there. Two are equal if they are written alike: the same name, the same number,
    /// the same operator with equal parts in their order.
    /// Refused: TorvaneTypes::general::InvalidDataTypeId (id minus one) if a part is not there.
    unsigned long getId(const SymbolicExprTable& table) const;

    SymbolicOp op() const { return op_; }

    /// How many dimensions a list has; 0 if this is not a list.
    virtual unsigned long getNumDimensions() const { return 0; }
    /// The id of a dimension, from 0. Refused: TorvaneTypes::Dimensions::InvalidDimensionIndex
    /// (the index, the number of dimensions).
    unsigned long getDimension(unsigned long index) const;

    /// How many operands an operator has, and the id of one, from 0; `index` has to be below.
    virtual unsigned long getNumArgs() const { return 0; }
    virtual unsigned long getArg(unsigned long index) const;
    /// How many entries a list has, and the id of one, from 0; `index` has to be below.
    virtual unsigned long getNumInputs() const { return 0; }
    virtual unsigned long getInput(unsigned long index) const;

    virtual bool isTermExpr() const { return false; }
    virtual bool isNumValue() const { return false; }
    virtual bool isUnaryExpr() const { return false; }
    virtual bool isBinaryExpr() const { return false; }
    virtual bool isTernaryExpr() const { return false; }
    virtual bool isMultiExpr() const { return false; }
    virtual bool isFcnCallExpr() const { return false; }

  protected:
    SymbolicExpr(SymbolicOp op, std::size_t hash)
        : hash_(static_cast<std::uint32_t>(hash ^ (hash >> 32))), op_(op) {}
    SymbolicExpr(const SymbolicExpr&) = default;

  private:
    friend struct SymbolicExprTable::Contents;

    /// Whether `other`, which has the same operator, has the same parts.
    virtual bool hasSamePartsAs(const SymbolicExpr& other) const = 0;
    virtual bool hasPartsBelow(std::size_t /*id*/) const { return true; }
    /// A copy in memory that is given back as a whole, without a call to the destructor where the
    /// copy holds no memory of its own.
    virtual SymbolicExpr* copyTo(std::pmr::memory_resource& memory) const = 0;

    std::uint32_t hash_;
    SymbolicOp op_;
};

/// A name. The text is taken as it is and need not be an identifier.
class TV_PLATFORM_API SymbolicString final : public SymbolicExpr {
  public:
    SymbolicString(const SymbolicExprTable& table, const std::string& text);

    const std::string& text() const { return text_; }
    bool isTermExpr() const override { return true; }

  private:
    bool hasSamePartsAs(const SymbolicExpr& other) const override;
    SymbolicExpr* copyTo(std::pmr::memory_resource& memory) const override;

    std::string text_;
};

/// A whole number of any size.
class TV_PLATFORM_API SymbolicIntValue final : public SymbolicExpr {
  public:
    SymbolicIntValue(const SymbolicExprTable& table, int value);
    SymbolicIntValue(const SymbolicExprTable& table, std::int64_t value);
    /// A number in decimal: digits, with a minus before them or not; zeros ahead do not count.
    /// std::invalid_argument for other texts.
    SymbolicIntValue(const SymbolicExprTable& table, const std::string& digits);

    /// In decimal, in the one way to write it.
    std::string text() const;
    /// Whether value() is the number; otherwise it is beyond 64 bits.
    bool isSmall() const { return digits_.empty(); }
    std::int64_t value() const { return value_; }
    bool isNegative() const { return isSmall() ? value_ < 0 : digits_.front() == '-'; }

    bool isNumValue() const override { return true; }

  private:
    struct Number;
    explicit SymbolicIntValue(Number number);

    bool hasSamePartsAs(const SymbolicExpr& other) const override;
    SymbolicExpr* copyTo(std::pmr::memory_resource& memory) const override;

    std::int64_t value_;
    std::string digits_;
};

class TV_PLATFORM_API SymbolicUnaryMinusExpr final : public SymbolicExpr {
  public:
    SymbolicUnaryMinusExpr(const SymbolicExprTable& table, const SymbolicExpr& operand);
    SymbolicUnaryMinusExpr(const SymbolicExprTable& table, unsigned long operand);

    unsigned long getNumArgs() const override { return 1; }
    unsigned long getArg(unsigned long index) const override;
    bool isUnaryExpr() const override { return true; }

  private:
    bool hasSamePartsAs(const SymbolicExpr& other) const override;
    bool hasPartsBelow(std::size_t id) const override { return operand_ < id; }
    SymbolicExpr* copyTo(std::pmr::memory_resource& memory) const override;

    std::uint32_t operand_;
};

/// An operator between two operands, given as expressions or as ids.
class TV_PLATFORM_API SymbolicBinaryExpr : public SymbolicExpr {
  public:
    unsigned long getNumArgs() const override { return 2; }
    unsigned long getArg(unsigned long index) const override;
    bool isBinaryExpr() const override { return true; }

  protected:
    SymbolicBinaryExpr(SymbolicOp op, const SymbolicExprTable& table, const SymbolicExpr& left,
                       const SymbolicExpr& right);
    SymbolicBinaryExpr(SymbolicOp op, const std::array<unsigned long, 2>& operands);

  private:
    bool hasSamePartsAs(const SymbolicExpr& other) const override;
    bool hasPartsBelow(std::size_t id) const override { return left_ < id && right_ < id; }

    std::uint32_t left_;
    std::uint32_t right_;
};

/// One class for each operator.
template <SymbolicOp operation>
class SymbolicBinaryExprOf final : public SymbolicBinaryExpr {
  public:
    SymbolicBinaryExprOf(const SymbolicExprTable& table, const SymbolicExpr& left,
                         const SymbolicExpr& right)
        : SymbolicBinaryExpr(operation, table, left, right) {}
    SymbolicBinaryExprOf(const SymbolicExprTable&, unsigned long left, unsigned long right)
        : SymbolicBinaryExpr(operation, {left, right}) {}

  private:
    SymbolicExpr* copyTo(std::pmr::memory_resource& memory) const override;
};

extern template class TV_PLATFORM_API SymbolicBinaryExprOf<SymbolicPlusOp>;
extern template class TV_PLATFORM_API SymbolicBinaryExprOf<SymbolicMinusOp>;
extern template class TV_PLATFORM_API SymbolicBinaryExprOf<SymbolicMultiplyOp>;
extern template class TV_PLATFORM_API SymbolicBinaryExprOf<SymbolicDivideOp>;
extern template class TV_PLATFORM_API SymbolicBinaryExprOf<SymbolicEqualOp>;
extern template class TV_PLATFORM_API SymbolicBinaryExprOf<SymbolicGreaterThanOp>;

using SymbolicPlusExpr = SymbolicBinaryExprOf<SymbolicPlusOp>;
using SymbolicMinusExpr = SymbolicBinaryExprOf<SymbolicMinusOp>;
using SymbolicMultiplyExpr = SymbolicBinaryExprOf<SymbolicMultiplyOp>;
using SymbolicDivideExpr = SymbolicBinaryExprOf<SymbolicDivideOp>;
using SymbolicEqualExpr = SymbolicBinaryExprOf<SymbolicEqualOp>;
using SymbolicGreaterThanExpr = SymbolicBinaryExprOf<SymbolicGreaterThanOp>;

/// What is made of any number of entries.
class TV_PLATFORM_API SymbolicMultiExpr : public SymbolicExpr {
  public:
    unsigned long getNumInputs() const override { return inputs_.size(); }
    unsigned long getInput(unsigned long index) const override { return inputs_[index]; }
    bool isMultiExpr() const override { return true; }

  protected:
    SymbolicMultiExpr(SymbolicOp op, const std::vector<unsigned long>& inputs);

  private:
    bool hasSamePartsAs(const SymbolicExpr& other) const override;
    bool hasPartsBelow(std::size_t id) const override;

    std::vector<unsigned long> inputs_;
};

/// A list of dimensions, by their ids.
class TV_PLATFORM_API SymbolicNDExpr final : public SymbolicMultiExpr {
  public:
    SymbolicNDExpr(const SymbolicExprTable&, const std::vector<unsigned long>& dimensions)
        : SymbolicMultiExpr(SymbolicNDOp, dimensions) {}

    unsigned long getNumDimensions() const override { return getNumInputs(); }

  private:
    SymbolicExpr* copyTo(std::pmr::memory_resource& memory) const override;
};

} // namespace TV
