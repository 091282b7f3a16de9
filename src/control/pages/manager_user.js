        function addModel(){
                window.showWebDialog( '/TarloQuery.Zembra?action=addsearchdlg_UsrModel&step=1',680,510)
        }
        function addRecord(){
        var i;
                i=window.showWebDialog( '/TarloQuery.Zembra?action=addsearchdlg_UsrField&step=1',680,510)
                if(i==1) SearchTable.reload();
        }
