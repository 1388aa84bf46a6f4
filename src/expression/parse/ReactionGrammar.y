/* The grammar of reaction expressions. The values of `exp` and `explist` are nodes in the parser's arena, which
   frees them: the parser's stack drops its values when it recovers from an error. */

%define api.pure full
%define api.prefix {reka_reaction_}
%define parse.error verbose
%define api.value.type union
%param {reka::ReactionExpressionParser& parser}

%code requires {
#include "expression/parse/ReactionExpressionParser.h"
}

%code {
#define YYINITDEPTH 200
#define YYMAXDEPTH 10000

using reka::NodeKind;

static int reka_reaction_lex(YYSTYPE* value, reka::ReactionExpressionParser& parser) noexcept;
static void reka_reaction_error(reka::ReactionExpressionParser& parser, const char* message) noexcept;
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
    REALNUM                     { $$ = parser.MakeConstant($1); }
  | PI                          { $$ = parser.MakeConstant(3.141592653589793); }
  | R                           { $$ = parser.MakeConstant(8.314); }  /* gas constant, J/(mol K) */
  | P                           { $$ = parser.MakeNode(NodeKind::Pressure); }
  | T                           { $$ = parser.MakeNode(NodeKind::Temperature); }
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
  | A '(' COMPONENT ')'         { $$ = parser.MakeCompoundLeaf(NodeKind::Activity, $3); }
  | F '(' COMPONENT ')'         { $$ = parser.MakeCompoundLeaf(NodeKind::Fugacity, $3); }
  | C '(' COMPONENT ')'         { $$ = parser.MakeCompoundLeaf(NodeKind::Molarity, $3); }
  | X '(' COMPONENT ')'         { $$ = parser.MakeCompoundLeaf(NodeKind::MoleFraction, $3); }
  | MWT '(' COMPONENT ')'       { $$ = parser.MakeCompoundLeaf(NodeKind::MolecularWeight, $3); }
  ;

explist:
    %empty                      { $$ = parser.MakeNode(NodeKind::ExpressionList); }
  | exp                         { $$ = parser.MakeOperation(NodeKind::ExpressionList, $1); }
  | explist ',' exp             { $$ = parser.AppendArgument($1, $3); }
  ;

%%

// The messages of the check table, and with them what users read, belong to this automaton.
static_assert(YYNSTATES == 54);

static_assert(END == reka::token::endOfInput && REALNUM == reka::token::realNumber &&
              FUNCNAME == reka::token::functionName && COMPONENT == reka::token::component && PI == reka::token::pi &&
              R == reka::token::r && P == reka::token::p && T == reka::token::t && A == reka::token::a &&
              F == reka::token::f && C == reka::token::c && X == reka::token::x);

static int reka_reaction_lex(YYSTYPE* value, reka::ReactionExpressionParser& parser) noexcept {
    const int code = parser.ReadTokenForGrammar();
    if (code == REALNUM) value->REALNUM = parser.tokenValue.number;
    if (code == FUNCNAME) value->FUNCNAME = parser.tokenValue.index;
    if (code == COMPONENT) value->COMPONENT = parser.tokenValue.index;
    return code;
}

static void reka_reaction_error(reka::ReactionExpressionParser& parser, const char* message) noexcept {
    parser.ReportGrammarError(message);
}

void reka::RunReactionGrammar(ReactionExpressionParser& parser) {
    reka_reaction_parse(parser);
}
