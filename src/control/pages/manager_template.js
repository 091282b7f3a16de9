        function addRecord(){
                window.showWebDialog( '/TarloQuery.Zembra?action=addsearchdlg_sysField&step=1',600,450)
        }
