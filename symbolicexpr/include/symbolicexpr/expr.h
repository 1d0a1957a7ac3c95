/// \file
/// Symbolic expressions: names, numbers, arithmetic, lists, and relations.
///
/// The operands of an expression are given by their ids in a table. An object of these classes is a
/// key: getId() finds the equal expression of the table or adds a copy of the key. Constructors
/// that take an operand as an object intern it. A constructor does not check ids; getId() does.
#pragma once

#include <fnd/export.h>
#include <symbolicexpr/table.h>

#include <array>
#include <cassert>
#include <cstdint>
#include <memory_resource>
#include <string>
#include <vector>

namespace TV {

/// Kinds of expressions.
enum SymbolicOp : std::uint32_t {
    SymbolicNameOp,        ///< SymbolicString
    SymbolicNumberOp,      ///< SymbolicIntValue
    SymbolicUnaryMinusOp,  ///< -a
    SymbolicPlusOp,        ///< a + b
    SymbolicMinusOp,       ///< a - b
    SymbolicMultiplyOp,    ///< a * b
    SymbolicDivideOp,      ///< a / b
    SymbolicEqualOp,       ///< a == b
    SymbolicGreaterThanOp, ///< a > b
    SymbolicNDOp           ///< [a, b, ...]
};

/// Base class of all expressions.
class TV_PLATFORM_API SymbolicExpr {
  public:
    virtual ~SymbolicExpr();

    /// Returns the id of the equal expression of the table; if there is none, adds a copy of this
    /// one. Expressions are equal if they are written alike: the same name, number or operator with
    /// equal operands in the same order. Throws TorvaneTypes::general::InvalidDataTypeId (id minus
    /// one) if an operand is not in the table. Constant time, but for the length of a text or list.
    unsigned long getId(const SymbolicExprTable& table) const;

    /// Returns the kind.
    SymbolicOp op() const { return op_; }

    /// Returns the number of dimensions of a list; 0 for all else.
    virtual unsigned long getNumDimensions() const { return 0; }
    /// Returns the id of a dimension, from 0. Throws std::out_of_range if there is none.
    unsigned long getDimension(unsigned long index) const;

    /// \name Operands
    /// @{

    /// Number of operands of an operator or entries of a list, and the id of one, from 0.
    /// \pre `index` is less than their number.
    virtual unsigned long getNumArgs() const { return 0; }
    virtual unsigned long getArg(unsigned long index) const;
    virtual unsigned long getNumInputs() const { return 0; }
    virtual unsigned long getInput(unsigned long index) const;
    /// @}

    /// \name Classification
    /// @{

    /// A name is a term, a number a number value, and a list a multi expression.
    virtual bool isTermExpr() const { return false; }
    virtual bool isNumValue() const { return false; }
    virtual bool isUnaryExpr() const { return false; }
    virtual bool isBinaryExpr() const { return false; }
    virtual bool isTernaryExpr() const { return false; }
    virtual bool isMultiExpr() const { return false; }
    virtual bool isFcnCallExpr() const { return false; }
    /// @}

  protected:
    /// \param hash equal for equal expressions
    SymbolicExpr(SymbolicOp op, std::size_t hash)
        : hash_(static_cast<std::uint32_t>(hash ^ (hash >> 32))), op_(op) {}
    /// For copyTo().
    SymbolicExpr(const SymbolicExpr&) = default;

  private:
    friend struct SymbolicExprTable::Contents;

    /// Whether `other` has the same operands. \pre It has the same operator.
    virtual bool hasSamePartsAs(const SymbolicExpr& other) const = 0;
    /// Whether all operands have lower ids than this.
    virtual bool hasPartsBelow(std::size_t /*id*/) const { return true; }
    /// Copies to memory that is released as a whole. The destructor is not called for operators,
    /// which hold no memory of their own.
    virtual SymbolicExpr* copyTo(std::pmr::memory_resource& memory) const = 0;

    std::uint32_t hash_;
    SymbolicOp op_;
};

/// A name. Its text need not be an identifier.
class TV_PLATFORM_API SymbolicString final : public SymbolicExpr {
  public:
    /// Takes the text unchanged, without parsing it.
    SymbolicString(const SymbolicExprTable& table, const std::string& text);

    /// Returns the text.
    const std::string& text() const { return text_; }
    bool isTermExpr() const override { return true; }

  private:
    bool hasSamePartsAs(const SymbolicExpr& other) const override;
    SymbolicExpr* copyTo(std::pmr::memory_resource& memory) const override;

    std::string text_;
};

/// An integer of any size.
class TV_PLATFORM_API SymbolicIntValue final : public SymbolicExpr {
  public:
    /// \name Constructors
    /// @{

    /// From a value, or from decimal digits with an optional minus, where leading zeros are
    /// ignored. Other texts throw std::invalid_argument.
    SymbolicIntValue(const SymbolicExprTable& table, int value);
    SymbolicIntValue(const SymbolicExprTable& table, std::int64_t value);
    SymbolicIntValue(const SymbolicExprTable& table, const std::string& digits);
    /// @}

    /// Returns decimal digits without leading zeros, with a minus if negative.
    std::string text() const;
    /// Returns whether the number fits 64 bits.
    bool isSmall() const { return digits_.empty(); }
    /// Returns the number if isSmall(), else 0.
    std::int64_t value() const { return value_; }
    /// Returns whether the number is less than 0.
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

/// The negation of an operand.
class TV_PLATFORM_API SymbolicUnaryMinusExpr final : public SymbolicExpr {
  public:
    /// \name Constructors
    /// @{

    /// From an operand, which is interned, or from its id.
    SymbolicUnaryMinusExpr(const SymbolicExprTable& table, const SymbolicExpr& operand);
    SymbolicUnaryMinusExpr(const SymbolicExprTable& table, unsigned long operand);
    /// @}

    unsigned long getNumArgs() const override { return 1; }
    unsigned long getArg(unsigned long index) const override;
    bool isUnaryExpr() const override { return true; }

  private:
    bool hasSamePartsAs(const SymbolicExpr& other) const override;
    bool hasPartsBelow(std::size_t id) const override { return operand_ < id; }
    SymbolicExpr* copyTo(std::pmr::memory_resource& memory) const override;

    std::uint32_t operand_;
};

/// Base class of operators with two operands.
class TV_PLATFORM_API SymbolicBinaryExpr : public SymbolicExpr {
  public:
    unsigned long getNumArgs() const override { return 2; }
    unsigned long getArg(unsigned long index) const override;
    bool isBinaryExpr() const override { return true; }

  protected:
    /// \name Constructors
    /// @{

    /// From operands, which are interned, the left one first, or from their ids.
    SymbolicBinaryExpr(SymbolicOp op, const SymbolicExprTable& table, const SymbolicExpr& left,
                       const SymbolicExpr& right);
    SymbolicBinaryExpr(SymbolicOp op, const std::array<unsigned long, 2>& operands);
    /// @}

  private:
    bool hasSamePartsAs(const SymbolicExpr& other) const override;
    bool hasPartsBelow(std::size_t id) const override { return left_ < id && right_ < id; }

    std::uint32_t left_;
    std::uint32_t right_;
};

/// An operator with two operands. There is one class for each.
template <SymbolicOp operation>
class SymbolicBinaryExprOf final : public SymbolicBinaryExpr {
  public:
    /// \name Constructors
    /// @{

    /// From operands, which are interned, the left one first, or from their ids.
    SymbolicBinaryExprOf(const SymbolicExprTable& table, const SymbolicExpr& left,
                         const SymbolicExpr& right)
        : SymbolicBinaryExpr(operation, table, left, right) {}
    SymbolicBinaryExprOf(const SymbolicExprTable&, unsigned long left, unsigned long right)
        : SymbolicBinaryExpr(operation, {left, right}) {}
    /// @}

  private:
    SymbolicExpr* copyTo(std::pmr::memory_resource& memory) const override;
};

extern template class TV_PLATFORM_API SymbolicBinaryExprOf<SymbolicPlusOp>;
extern template class TV_PLATFORM_API SymbolicBinaryExprOf<SymbolicMinusOp>;
extern template class TV_PLATFORM_API SymbolicBinaryExprOf<SymbolicMultiplyOp>;
extern template class TV_PLATFORM_API SymbolicBinaryExprOf<SymbolicDivideOp>;
extern template class TV_PLATFORM_API SymbolicBinaryExprOf<SymbolicEqualOp>;
extern template class TV_PLATFORM_API SymbolicBinaryExprOf<SymbolicGreaterThanOp>;

/// \name Binary operators
/// @{

/// The classes of arithmetic and of relations.
using SymbolicPlusExpr = SymbolicBinaryExprOf<SymbolicPlusOp>;
using SymbolicMinusExpr = SymbolicBinaryExprOf<SymbolicMinusOp>;
using SymbolicMultiplyExpr = SymbolicBinaryExprOf<SymbolicMultiplyOp>;
using SymbolicDivideExpr = SymbolicBinaryExprOf<SymbolicDivideOp>;
using SymbolicEqualExpr = SymbolicBinaryExprOf<SymbolicEqualOp>;
using SymbolicGreaterThanExpr = SymbolicBinaryExprOf<SymbolicGreaterThanOp>;
/// @}

/// Base class of expressions with any number of entries.
class TV_PLATFORM_API SymbolicMultiExpr : public SymbolicExpr {
  public:
    unsigned long getNumInputs() const override { return inputs_.size(); }
    unsigned long getInput(unsigned long index) const override {
        assert(index < inputs_.size());
        return inputs_[index];
    }
    bool isMultiExpr() const override { return true; }

  protected:
    /// Takes the ids of the entries.
    SymbolicMultiExpr(SymbolicOp op, const std::vector<unsigned long>& inputs);

  private:
    bool hasSamePartsAs(const SymbolicExpr& other) const override;
    bool hasPartsBelow(std::size_t id) const override;

    std::vector<unsigned long> inputs_;
};

/// A list of dimensions.
class TV_PLATFORM_API SymbolicNDExpr final : public SymbolicMultiExpr {
  public:
    /// Takes the ids of the dimensions.
    SymbolicNDExpr(const SymbolicExprTable&, const std::vector<unsigned long>& dimensions)
        : SymbolicMultiExpr(SymbolicNDOp, dimensions) {}

    unsigned long getNumDimensions() const override { return getNumInputs(); }

  private:
    SymbolicExpr* copyTo(std::pmr::memory_resource& memory) const override;
};

} // namespace TV
