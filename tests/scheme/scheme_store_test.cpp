#include "scheme/scheme_store.h"

#include <gtest/gtest.h>

#include "support/dictionary.h"

namespace tarlo::scheme {
namespace {

TEST(SchemeStore, LoadsListsAndCompiles) {
  testing::DictionaryDatabase data;
  data.execute(
      "insert into Zembra_Query_Main (Query_ID,Query_Name,Query_Desc,Query_Fields,Query_MainTBID,"
      "Query_Vir,Query_Rel,Query_Static,Query_Group,Query_MultiRelSel,Zembra_Flag) values"
      " (1,'大单','big','select 1',10,'Net:[101]*2','-1,1,100,-1','-1,4','102','0',1),"
      " (2,'old',null,null,12,'','120,7,1,-1',null,null,null,0),"
      " (3,'all',null,'',12,null,null,null,null,'7',1)");
  const auto titles = listSchemes(data.page());
  ASSERT_EQ(titles.size(), 2u);
  EXPECT_EQ(titles[0].name, "大单");
  EXPECT_EQ(titles[1].id, 3);

  const std::tuple<int, std::string, bool, std::string> rows[] = {
      {1, "getQuery_Vir_Fil_Sta", false,
       "select SUM([Orders].[Amount]*2) as [Net] from [Orders] where [Orders].[Zembra_Flag]=1"
       " and ( [Orders].[Amount]*2 > '100') group by [Orders].[CustID]"},
      {2, "getQuery_Fil", true,
       "select [Region].[ID] as [Area.Key],[Region].[Name] as [Area.Name] from [Region]"
       " where [Region].[Zembra_Flag]=1 and ( [Region].[ID] = '1' )"},
      {3, "getQuery_None", false,
       "select [Customer].[ID] as [Client.Key],[Customer].[City] as [Client.Town],"
       "[Region].[ID] as [Area.Key],[Region].[Name] as [Area.Name] from [Customer],[Region]"
       " where [Region].[ID]=[Customer].[ID] and [Customer].[Zembra_Flag]=1"
       " and [Region].[Zembra_Flag]=1"},
  };
  for (const auto& [id, variant, deleted, statement] : rows) {
    const auto scheme = loadScheme(data.page(), id);
    ASSERT_TRUE(scheme);
    EXPECT_EQ(compile::operationFor(scheme->definition), variant);
    EXPECT_EQ(scheme->deleted, deleted);
    EXPECT_EQ(compile::compileDefinition(data.page(), scheme->definition), statement);
  }
  EXPECT_EQ(loadScheme(data.page(), 1)->stored, "select 1");
  EXPECT_FALSE(loadScheme(data.page(), 4));
}

}  // namespace
}  // namespace tarlo::scheme
