/// \file
/// Token grammar of unit expressions.
#pragma once

#include "units/expression_reader.h"

#include <boost/phoenix/bind.hpp>
#include <boost/phoenix/core.hpp>
#include <boost/phoenix/operator.hpp>
#include <boost/regex/pending/unicode_iterator.hpp>
#include <boost/spirit/include/qi_action.hpp>
#include <boost/spirit/include/qi_auxiliary.hpp>
#include <boost/spirit/include/qi_char.hpp>
#include <boost/spirit/include/qi_directive.hpp>
#include <boost/spirit/include/qi_int.hpp>
#include <boost/spirit/include/qi_nonterminal.hpp>
#include <boost/spirit/include/qi_operator.hpp>
#include <boost/spirit/include/qi_parse.hpp>

namespace TVTypeSys {

using UnitExprIterator = boost::u16_to_u32_iterator<const char16_t*>;

/// Alternation of operands and operators. The semantic actions of the Reader check nesting.
///
/// The grammar is LL(1): each alternative is selected by the next token and never backtracks, so
/// the time is linear in the length of the text. The grammar has no state, so one object serves all
/// threads.
template <class Reader, class Iterator>
class UnitExprParser : public boost::spirit::qi::grammar<Iterator, void(Reader&),
                                                         boost::spirit::standard_wide::space_type> {
  public:
    UnitExprParser() : UnitExprParser::base_type(unitExpr_) {
        using namespace boost::spirit::qi::labels;
        using boost::phoenix::bind;
        using boost::spirit::qi::eps;
        using boost::spirit::qi::int_;
        using boost::spirit::qi::lexeme;
        using boost::spirit::qi::lit;
        using boost::spirit::qi::omit;
        using boost::spirit::qi::raw;
        using boost::spirit::standard_wide::alnum;
        using boost::spirit::standard_wide::char_;

        unitExpr_ = operand_(_r1) >> *((lit(L'*') >> eps(bind(&Reader::multiply, _r1)) |
                                        lit(L'/') >> eps(bind(&Reader::divide, _r1))) >>
                                       operand_(_r1)) >>
                    eps(bind(&Reader::end, _r1));

        operand_ = *(lit(L'(') >> eps(bind(&Reader::open, _r1))) >>
                   (unitName_(_r1) | omit[int_] >> eps(bind(&Reader::signedNumber, _r1))) >>
                   *(lit(L')') >> eps(bind(&Reader::close, _r1)) | lit(L'^') >> exponentTerm_(_r1));

        unitName_ = raw[lexeme[+(alnum | char_(L'_'))]][_pass = bind(&addName, _r1, _1)];

        // An integer in balanced parentheses.
        exponentTerm_ = eps[_a = 0] >> *(lit(L'(') >> eps(bind(&canOpen, _r1, _a)) >> eps[++_a]) >>
                        int_[_pass = bind(&Reader::power, _r1, _1)] >>
                        *(eps(_a > 0) >> lit(L')') >> eps[--_a]) >> eps(_a == 0);
    }

  private:
    using Skipper = boost::spirit::standard_wide::space_type;
    template <class... Locals>
    using Rule = boost::spirit::qi::rule<Iterator, void(Reader&), Skipper, Locals...>;

    static bool addName(Reader& reader, const boost::iterator_range<Iterator>& name) {
        const auto* begin = name.begin().base();
        return reader.name({begin, static_cast<std::size_t>(name.end().base() - begin)});
    }
    static bool canOpen(const Reader& reader, int open) {
        return reader.depth() + open < Reader::maximumNesting;
    }

    Rule<> unitExpr_;
    Rule<> operand_;
    Rule<> unitName_;
    Rule<boost::spirit::qi::locals<int>> exponentTerm_;
};

} // namespace TVTypeSys
