#pragma once

#include <symbolicexpr/table.h>

#include <string>
#include <vector>

namespace TV {

class SymbolicExpr {
  public:
    virtual ~SymbolicExpr();
    unsigned long getId(const SymbolicExprTable& table) const;
    unsigned long getDimension(unsigned long index) const;
    virtual unsigned long getNumDimensions() const;
    virtual unsigned long getNumArgs() const;
    virtual unsigned long getNumInputs() const;
    virtual bool isTermExpr() const;
    virtual bool isNumValue() const;
    virtual bool isUnaryExpr() const;
    virtual bool isBinaryExpr() const;
    virtual bool isTernaryExpr() const;
    virtual bool isMultiExpr() const;
    virtual bool isFcnCallExpr() const;
};

class SymbolicString : public SymbolicExpr {
  public:
    SymbolicString(const SymbolicExprTable& table, const std::string& text);
};

class SymbolicIntValue : public SymbolicExpr {
  public:
    SymbolicIntValue(const SymbolicExprTable& table, int value);
};

class SymbolicNDExpr : public SymbolicExpr {
  public:
    SymbolicNDExpr(const SymbolicExprTable& table, const std::vector<unsigned long>& dimensions);
};

class SymbolicUnaryMinusExpr : public SymbolicExpr {
  public:
    SymbolicUnaryMinusExpr(const SymbolicExprTable& table, const SymbolicExpr& operand);
};

class BinaryExpr : public SymbolicExpr {
  public:
    BinaryExpr(const SymbolicExprTable& table, const SymbolicExpr& left, const SymbolicExpr& right);
};

typedef BinaryExpr SymbolicPlusExpr, SymbolicMinusExpr, SymbolicDivideExpr, SymbolicEqualExpr,
    SymbolicGreaterThanExpr;

class SymbolicMultiplyExpr : public SymbolicExpr {
  public:
    SymbolicMultiplyExpr(const SymbolicExprTable& table, const SymbolicExpr& left,
                         const SymbolicExpr& right);
    SymbolicMultiplyExpr(const SymbolicExprTable& table, unsigned long left, unsigned long right);
};

} // namespace TV
