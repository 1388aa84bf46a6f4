/* The grammar of numeric fields: that of reaction expressions without the properties of a material. A syntax error is
   told without the tokens. The values of `exp` and `explist` are nodes in the parser's arena. */

%define api.pure full
%define api.prefix {reka_scalar_}
%define parse.error simple
%define api.value.type union
%param {reka::ScalarExpressionParser& parser}

%code requires {
#include "expression/parse/ScalarExpressionParser.h"
}

%code {
#define YYINITDEPTH 200
#define YYMAXDEPTH 10000

using reka::NodeKind;

static int reka_scalar_lex(YYSTYPE* value, reka::ScalarExpressionParser& parser) noexcept;
static void reka_scalar_error(reka::ScalarExpressionParser& parser, const char* message) noexcept;
}

%token END 0
%token <double> REALNUM 258
%token <std::int32_t> FUNCNAME 259
%token COMPONENT 260  /* no word yields it */
%token PI 261 R 262
%token NEG 263  /* a precedence only */

%left '-' '+'
%left '*' '/'
%precedence NEG
%right '^'
%token '(' ')' ','

%nterm <reka::ExpressionNode*> exp explist

%start exp

%%

exp:
    REALNUM                     { $$ = parser.MakeConstant($1); }
  | PI                          { $$ = parser.MakeConstant(3.141592653589793); }
  | R                           { $$ = parser.MakeConstant(8.314); }  /* gas constant, J/(mol K) */
  | FUNCNAME '(' explist ')'    { $$ = parser.MakeFunction($1, $3); }
  | FUNCNAME '(' error ')'      { $$ = parser.MakeNode(NodeKind::Failed); }
  | exp '+' exp                 { $$ = parser.MakeOperation(NodeKind::Addition, $1, $3); }
  | exp '-' exp                 { $$ = parser.MakeOperation(NodeKind::Subtraction, $1, $3); }
  | exp '*' exp                 { $$ = parser.MakeOperation(NodeKind::Multiplication, $1, $3); }
  | exp '/' exp                 { $$ = parser.MakeOperation(NodeKind::Division, $1, $3); }
  | '-' exp %prec NEG           { $$ = parser.MakeOperation(NodeKind::Negation, $2); }
  | exp '^' exp                 { $$ = parser.MakeOperation(NodeKind::Power, $1, $3); }
  | '(' exp ')'                 { $$ = $2; }
  | '(' error ')'               { $$ = parser.MakeNode(NodeKind::Failed); }
  ;

explist:
    %empty                      { $$ = parser.MakeNode(NodeKind::ExpressionList); }
  | exp                         { $$ = parser.MakeOperation(NodeKind::ExpressionList, $1); }
  | explist ',' exp             { $$ = parser.AppendArgument($1, $3); }
  ;

%%

static_assert(END == reka::token::endOfInput && REALNUM == reka::token::realNumber &&
              FUNCNAME == reka::token::functionName && PI == reka::token::pi && R == reka::token::r);

static int reka_scalar_lex(YYSTYPE* value, reka::ScalarExpressionParser& parser) noexcept {
    const int code = parser.ReadTokenForGrammar();
    if (code == REALNUM) value->REALNUM = parser.tokenValue.number;
    if (code == FUNCNAME) value->FUNCNAME = parser.tokenValue.index;
    return code;
}

static void reka_scalar_error(reka::ScalarExpressionParser& parser, const char* message) noexcept {
    parser.ReportGrammarError(message);
}

void reka::RunScalarGrammar(ScalarExpressionParser& parser) {
    reka_scalar_parse(parser);
}
