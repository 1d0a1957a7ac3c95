/// \file
/// The grammar of expressions of sizes.
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

/// The sequence of the tokens. What encloses what, and which operands an operator takes, is up to
/// the builder, which is told of each.
///
/// Where there is no operand, an expectation failure tells the place; where an operand cannot be
/// followed by what is there, the grammar ends ahead of it. Nothing is read twice and nothing
/// recurs. Holds no state of a text; one object serves all threads.
class ExpressionGrammar : public boost::spirit::qi::grammar<const char*, void(ExpressionBuilder&),
                                                            boost::spirit::ascii::space_type> {
  public:
    ExpressionGrammar() : ExpressionGrammar::base_type(expression) {
        using namespace boost::spirit::qi::labels;
        using boost::phoenix::bind;
        using boost::spirit::ascii::char_;
        using boost::spirit::qi::eps;
        using boost::spirit::qi::lexeme;
        using boost::spirit::qi::lit;
        using boost::spirit::qi::raw;
        using Builder = ExpressionBuilder;

        expression = operand(_r1) >
                     *(char_("-+*/,")[_pass = bind(&Builder::between, _r1, _1)] > operand(_r1));

        operand = *char_("([-")[_pass = bind(&Builder::before, _r1, _1)] >
                  (raw[lexeme[char_("a-zA-Z_") >> *char_("a-zA-Z_0-9")]][bind(&tellName, _r1, _1)] |
                   raw[lexeme[+char_("0-9")]][bind(&tellNumber, _r1, _1)] |
                   lit(']') >> eps(bind(&Builder::closeEmptyList, _r1))) >
                  *char_(")]")[_pass = bind(&Builder::behind, _r1, _1)];
    }

  private:
    using Range = boost::iterator_range<const char*>;
    using Rule = boost::spirit::qi::rule<const char*, void(ExpressionBuilder&),
                                         boost::spirit::ascii::space_type>;

    static void tellName(ExpressionBuilder& builder, const Range& text) {
        builder.name({text.begin(), text.size()});
    }
    static void tellNumber(ExpressionBuilder& builder, const Range& text) {
        builder.number({text.begin(), text.size()});
    }

    Rule expression;
    Rule operand;
};

} // namespace TV
