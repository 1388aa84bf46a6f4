/* SPDX-License-Identifier: MIT */
/* The grammar of reaction expressions. The values of `exp` and `explist` are nodes in the arena of the actions, which
   frees them: the parser's stack drops its values when it recovers from an error. */

%define api.pure full
%define api.prefix {reka_reaction_}
%define parse.error verbose
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

static int reka_reaction_lex(YYSTYPE* value, reka::CExpressionLexer& lexer) noexcept;
static void reka_reaction_error(reka::CExpressionLexer&, reka::CGrammarActions& actions, const char* message) noexcept;
}

/* The names are what syntax errors show, in this order. */
%token END 0 "$end"
%token <double> REALNUM 258
%token <std::int32_t> FUNCNAME 259 COMPONENT 260
%token PI 261 R 262 P 263 T 264 A 265 F 266 C 267 X 268
%token MWT 269  /* no word yields it */
%token NEG 270  /* a precedence only */

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
  | P                           { $$ = actions.MakeNode(NodeKind::Pressure); }
  | T                           { $$ = actions.MakeNode(NodeKind::Temperature); }
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
  | A '(' COMPONENT ')'         { $$ = actions.MakeCompoundLeaf(NodeKind::Activity, $3); }
  | F '(' COMPONENT ')'         { $$ = actions.MakeCompoundLeaf(NodeKind::Fugacity, $3); }
  | C '(' COMPONENT ')'         { $$ = actions.MakeCompoundLeaf(NodeKind::Molarity, $3); }
  | X '(' COMPONENT ')'         { $$ = actions.MakeCompoundLeaf(NodeKind::MoleFraction, $3); }
  | MWT '(' COMPONENT ')'       { $$ = actions.MakeCompoundLeaf(NodeKind::MolecularWeight, $3); }
  ;

explist:
    %empty                      { $$ = actions.MakeNode(NodeKind::ExpressionList); }
  | exp                         { $$ = actions.MakeOperation(NodeKind::ExpressionList, $1); }
  | explist ',' exp             { $$ = actions.AppendArgument($1, $3); }
  ;

%%

// The messages of the check table, and with them what users read, belong to this automaton.
static_assert(YYNSTATES == 54);

static_assert(END == reka::token::endOfInput && REALNUM == reka::token::realNumber &&
              FUNCNAME == reka::token::functionName && COMPONENT == reka::token::component && PI == reka::token::pi &&
              R == reka::token::r && P == reka::token::p && T == reka::token::t && A == reka::token::a &&
              F == reka::token::f && C == reka::token::c && X == reka::token::x);

static int reka_reaction_lex(YYSTYPE* value, reka::CExpressionLexer& lexer) noexcept {
    const int code = lexer.ReadTokenForGrammar();
    if (code == REALNUM) value->REALNUM = lexer.Value().number;
    if (code == FUNCNAME) value->FUNCNAME = lexer.Value().index;
    if (code == COMPONENT) value->COMPONENT = lexer.Value().index;
    return code;
}

static void reka_reaction_error(reka::CExpressionLexer&, reka::CGrammarActions& actions, const char* message) noexcept {
    actions.ReportGrammarError(message);
}

void reka::RunReactionGrammar(CExpressionLexer& lexer, CGrammarActions& actions) {
    reka_reaction_parse(lexer, actions);
}
