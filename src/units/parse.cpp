#include "units/grammar.h"

#include <tvtypes/units/expression.h>

#include <memory>

bool parseUnitExpr(const std::u16string& expression, Monomial& result) {
    using TVTypeSys::ExpressionReader;
    using TVTypeSys::UnitExprIterator;
    using Parser = TVTypeSys::UnitExprParser<ExpressionReader, UnitExprIterator>;
    // Never destroyed: destructors of static objects may parse.
    static const Parser& parser = *std::make_unique<const Parser>().release();

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
