/* SPDX-License-Identifier: MIT */
/* The grammar of numeric fields: that of reaction expressions without the properties of a material. A syntax error is
   told without the tokens. The values of `exp` and `explist` are nodes in the arena of the actions. */

%define api.pure full
%define api.prefix {reka_scalar_}
%define parse.error simple
%define api.value.type union
%lex-param {reka::CExpressionLexer& lexer}
%parse-param {reka::CExpressionLexer& lexer} {reka::CGrammarActions& actions}

%code requires {
#include "expression/parse/GrammarActions.h"
}

%code {
#define YYINITDEPTH 200
#define YYMAXDEPTH 10000

using reka::NodeKind;

static int reka_scalar_lex(YYSTYPE* value, reka::CExpressionLexer& lexer) noexcept;
static void reka_scalar_error(reka::CExpressionLexer&, reka::CGrammarActions& actions, const char* message) noexcept;
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
    REALNUM                     { $$ = actions.MakeConstant($1); }
  | PI                          { $$ = actions.MakeConstant(3.141592653589793); }
  | R                           { $$ = actions.MakeConstant(8.314); }  /* gas constant, J/(mol K) */
  | FUNCNAME '(' explist ')'    { $$ = actions.MakeFunction($1, $3); }
  | FUNCNAME '(' error ')'      { $$ = actions.MakeNode(NodeKind::Failed); }
  | exp '+' exp                 { $$ = actions.MakeOperation(NodeKind::Addition, $1, $3); }
  | exp '-' exp                 { $$ = actions.MakeOperation(NodeKind::Subtraction, $1, $3); }
  | exp '*' exp                 { $$ = actions.MakeOperation(NodeKind::Multiplication, $1, $3); }
  | exp '/' exp                 { $$ = actions.MakeOperation(NodeKind::Division, $1, $3); }
  | '-' exp %prec NEG           { $$ = actions.MakeOperation(NodeKind::Negation, $2); }
  | exp '^' exp                 { $$ = actions.MakeOperation(NodeKind::Power, $1, $3); }
  | '(' exp ')'                 { $$ = $2; }
  | '(' error ')'               { $$ = actions.MakeNode(NodeKind::Failed); }
  ;

explist:
    %empty                      { $$ = actions.MakeNode(NodeKind::ExpressionList); }
  | exp                         { $$ = actions.MakeOperation(NodeKind::ExpressionList, $1); }
  | explist ',' exp             { $$ = actions.AppendArgument($1, $3); }
  ;

%%

static_assert(END == reka::token::endOfInput && REALNUM == reka::token::realNumber &&
              FUNCNAME == reka::token::functionName && PI == reka::token::pi && R == reka::token::r);

static int reka_scalar_lex(YYSTYPE* value, reka::CExpressionLexer& lexer) noexcept {
    const int code = lexer.ReadTokenForGrammar();
    if (code == REALNUM) value->REALNUM = lexer.Value().number;
    if (code == FUNCNAME) value->FUNCNAME = lexer.Value().index;
    return code;
}

static void reka_scalar_error(reka::CExpressionLexer&, reka::CGrammarActions& actions, const char* message) noexcept {
    actions.ReportGrammarError(message);
}

void reka::RunScalarGrammar(CExpressionLexer& lexer, CGrammarActions& actions) {
    reka_scalar_parse(lexer, actions);
}
