/// \file
/// Token grammar of symbolic expressions.
#pragma once

#include "parser/expression_builder.h"

#include <boost/phoenix/bind.hpp>
#include <boost/phoenix/core.hpp>
#include <boost/phoenix/operator.hpp>
#include <boost/spirit/include/qi_action.hpp>
#include <boost/spirit/include/qi_auxiliary.hpp>
#include <boost/spirit/include/qi_char.hpp>
#include <boost/spirit/include/qi_directive.hpp>
#include <boost/spirit/include/qi_nonterminal.hpp>
#include <boost/spirit/include/qi_operator.hpp>
#include <boost/spirit/include/qi_parse.hpp>

namespace TV {

/// Alternation of operands and operators. The semantic actions of ExpressionBuilder check nesting
/// and apply operator precedence.
///
/// A missing operand is an expectation failure, which has the position; where an operand is
/// followed by another token than the grammar allows, parsing stops before that token. There is no
/// backtracking and no recursion. The grammar has no state, so one object serves all threads.
class ExpressionGrammar : public boost::spirit::qi::grammar<const char*, void(ExpressionBuilder&),
                                                            boost::spirit::ascii::space_type> {
  public:
    ExpressionGrammar() : ExpressionGrammar::base_type(expression_) {
        using namespace boost::spirit::qi::labels;
        using boost::phoenix::bind;
        using boost::spirit::ascii::char_;
        using boost::spirit::qi::eps;
        using boost::spirit::qi::lexeme;
        using boost::spirit::qi::lit;
        using boost::spirit::qi::raw;
        using Builder = ExpressionBuilder;

        expression_ = operand_(_r1) >
                      *(char_("-+*/,")[_pass = bind(&Builder::infix, _r1, _1)] > operand_(_r1));

        operand_ = *char_("([-")[_pass = bind(&Builder::prefix, _r1, _1)] >
                   (raw[lexeme[char_("a-zA-Z_") >> *char_("a-zA-Z_0-9")]][bind(&addName, _r1, _1)] |
                    raw[lexeme[+char_("0-9")]][bind(&addNumber, _r1, _1)] |
                    lit(']') >> eps(bind(&Builder::closeEmptyList, _r1))) >
                   *char_(")]")[_pass = bind(&Builder::postfix, _r1, _1)];
    }

  private:
    using Range = boost::iterator_range<const char*>;
    using Rule = boost::spirit::qi::rule<const char*, void(ExpressionBuilder&),
                                         boost::spirit::ascii::space_type>;

    static void addName(ExpressionBuilder& builder, const Range& text) {
        builder.name({text.begin(), text.size()});
    }
    static void addNumber(ExpressionBuilder& builder, const Range& text) {
        builder.number({text.begin(), text.size()});
    }

    Rule expression_;
    Rule operand_;
};

} // namespace TV
