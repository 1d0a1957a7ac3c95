#include "units/grammar.h"

#include <tvtypes/units/expression.h>

bool parseUnitExpr(const std::u16string& expression, Monomial& result) {
    using TVTypeSys::ExpressionReader;
    using TVTypeSys::UnitExprIterator;
    static const TVTypeSys::UnitExprParser<ExpressionReader, UnitExprIterator> parser;

    // The terminating null ends a lone surrogate at the end of the text: the iterator throws.
    UnitExprIterator position(expression.data());
    const UnitExprIterator end(expression.data() + expression.size());
    ExpressionReader reader;
    const bool read = boost::spirit::qi::phrase_parse(
        position, end, parser(boost::phoenix::ref(reader)), boost::spirit::standard_wide::space);
    if (!read || position != end) {
        return false;
    }
    reader.factors().merge(result);
    return true;
}
