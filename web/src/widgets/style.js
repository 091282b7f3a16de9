// The look of the controls inside the tags: colours come from the page's scheme through its
// variables.

export const kStyle = `
:host{display:inline-block;vertical-align:middle}
*{box-sizing:border-box;font:inherit}
select,input[type=text]{min-height:28px;padding:3px 6px;border:1px solid #8794a3;border-radius:4px;
background:var(--t-surface,#fff);color:var(--t-text,#1c2430);max-width:320px}
select:hover,input[type=text]:hover{border-color:#5f6b79}
:focus-visible{outline:2px solid var(--t-focus,#2f8be0);outline-offset:-1px}
:disabled{background:var(--t-bg,#f2f6fa);color:var(--t-muted,#5a6675)}
input[type=radio],input[type=checkbox]{accent-color:var(--t-accent,#1668b0);vertical-align:-2px;margin:0 5px 0 0}
label{cursor:pointer;white-space:nowrap}
.grid{display:grid;gap:4px 18px}
.row{display:flex;gap:8px;align-items:center}
.note{color:var(--t-muted,#5a6675);font-size:12px}
.lists{display:flex;gap:8px;align-items:center}
.lists select{min-width:160px}
.lists div{display:flex;flex-direction:column;gap:4px}
button{min-width:32px;min-height:26px;border:1px solid var(--t-border,#d3dee9);border-radius:4px;
background:var(--t-surface,#fff);color:var(--t-accent-strong,#0e4478);cursor:pointer}
button:hover{border-color:var(--t-accent,#1668b0);background:var(--t-hover,#eef5fb)}
`;
