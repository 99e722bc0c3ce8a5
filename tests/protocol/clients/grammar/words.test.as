// SYNTAX TEST "source.angelscript" "What an editor colours without asking the server"
  int count = 0x1F + 2.5e3 + .5f; // all of it 'is' "one" remark
//^^^ storage.type.angelscript
//    ^^^^^ - keyword.other storage.type entity.name.function
//            ^^^^ constant.numeric.angelscript
//                   ^^^^^ constant.numeric.angelscript
//                           ^^^ constant.numeric.angelscript
//                                ^^^^^^^^^^^^^^^^^^^^^^^^^^^^^^ comment.line.double-slash.angelscript
  list[1].x2 = shown(name, this.int8s) /* if */ + 1.f;
//     ^ constant.numeric.angelscript
//        ^^ - constant.numeric
//             ^^^^^ entity.name.function.angelscript
//                         ^^^^ constant.language.angelscript
//                              ^^^^^ - storage.type
//                                     ^^^^^^^^ comment.block.angelscript
//                                                ^^^ constant.numeric.angelscript
  if (text == "a \" for" || c == '\'') return;
//^^ keyword.control.angelscript - entity.name.function
//            ^^^^^^^^^^ string.quoted.double.angelscript
//               ^^ constant.character.escape.angelscript
//                               ^^^^ string.quoted.single.angelscript
//                                     ^^^^^^ keyword.control.angelscript
  string open = "not closed
  class After : Base { }
//^^^^^ keyword.other.angelscript - string.quoted.double.angelscript
  string three = """one "two"
  class
//^^^^^ string.quoted.triple.angelscript - keyword.other.angelscript
  """;
  #include "other.as"
//^^^^^^^^^^^^^^^^^^^ meta.preprocessor.angelscript - string.quoted.double.angelscript
