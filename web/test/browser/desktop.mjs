// A full page inside the desktop: its head paints the outer page, its foot the side pane, and the
// colour scheme that the user keeps for its module wins.

import assert from 'node:assert/strict';
import { kHead } from './harness.mjs';

const classes = (word) => `parent.TarloY.document.body.className='${word}body';
  parent.startHeadtop.className='startHeadtop${word}';
  parent.startHead.className='startHead${word}';
  parent.startFooter.className='startFooter${word}';
  parent.startFooterBottom.className='startFooterBottom${word}';`;

const kept = (number, word) => `if(userStyle==${number}){ ${classes(word)}
  Zembra_Head_Style[0].className='ZembraxTitle_${word}';
  Zembra_Head_Style[1].src='/images/icoDefault_${word}.gif'; }`;

const styleHref = (n) =>
  `javascript: ZembraSaveStyle(12,${n});window.location = window.location.href;`;

export const pages = {
  '/': `${kHead}</head><body><div id=startHeadtop style="display:none"></div><div id=startHead></div>
    <div id=hiddenBarForLeft>loading</div>
    <div id=TarloTipInfo style="display:none"><span></span></div>
    <iframe name=TarloY></iframe><iframe name=Zembra width=800 height=300></iframe>
    <div id=startFooter></div><div id=startFooterBottom></div>
    <script>var g_sReady='就绪';
      var paneFrame = document.querySelector('[name=TarloY]');
      paneFrame.onload = function(){ document.querySelector('[name=Zembra]').src = '/full'; };
      paneFrame.src = '/pane';</script></body></html>`,
  '/pane': `${kHead}</head><body>own text</body></html>`,
  '/images/icoDefault_sea.gif': '',
  '/images/icoDefault_olive.gif': '',
  '/full': `${kHead}<script>
      top.document.all.startHeadtop.style.display='block'; top.document.all.hiddenBarForLeft.style.display='none';;
      try{top.TarloTipInfo.style.display='none';}catch(e){;}
    </script>
    <script type="text/javascript">window.top.document.title = 'Orvane.Zembra - 方案';</script></head>
    <body bgcolor=white><iframe name='pophidden' style='display:none' src='about:blank'></iframe>
    <div id=Zembra_Head_Style class='ZembraxTitle_sea'><img id=Zembra_Head_Style
      src='/images/icoDefault_sea.gif' border=0>title</div>
    <a href="${styleHref(2)}">olive</a> <a href="${styleHref(0)}">recover</a>
    <script>try{
      var HTMLHelp = '<table><tr id= Sub7><td onclick="linkStatus(Sub7)">folder</td></tr><tr style=\\'display:none\\' id= Sub7><td id= Sub7>entry</td></tr></table>';
      ${classes('sea').split('\n')[0]}
      parent.TarloY.document.body.innerHTML=HTMLHelp;
      if (ZembraGetUserDefineStyle(12)!=null&&ZembraGetUserDefineStyle(12)!=0){
        var userStyle = ZembraGetUserDefineStyle(12) ;
        ${kept(1, 'sea')} ${kept(2, 'olive')}
      }else{ ${classes('')} }
      }catch(e){window.painted = String(e);}</script>
    <iframe name='hidden' style='display:none' src='about:blank'></iframe></body></html>`,
};

async function look(page) {
  const full = page.frame({ name: 'Zembra' });
  await full.waitForURL('**/full');
  await full.waitForLoadState();
  return page.evaluate(() => ({
    title: document.title,
    shown: [startHeadtop.style.display, hiddenBarForLeft.style.display],
    head: startHead.className,
    pane: TarloY.document.body.className,
    icon: Zembra.document.querySelector('img').getAttribute('src'),
    failed: Zembra.painted,
  }));
}

export const tests = {
  async 'a full page paints the desktop, and a kept scheme survives the reload'({ page, open }) {
    await open('/');
    assert.deepEqual(await look(page), {
      title: 'Orvane.Zembra - 方案',
      shown: ['block', 'none'],
      head: 'startHead',
      pane: 'body',
      icon: '/images/icoDefault_sea.gif',
      failed: undefined,
    });
    const full = page.frame({ name: 'Zembra' });
    await full.getByText('olive').click();
    await page.waitForFunction(() => startHead.className === 'startHeadolive');
    const kept = await look(page);
    assert.deepEqual(
      [kept.pane, kept.icon, kept.failed],
      ['olivebody', '/images/icoDefault_olive.gif', undefined],
    );
    await full.getByText('recover').click();
    await page.waitForFunction(() => startHead.className === 'startHead');
  },

  async 'links that a page has put into the pane open there'({ page, open }) {
    await open('/');
    await look(page);
    const pane = page.frame({ name: 'TarloY' });
    await pane.getByText('folder').click();
    assert.equal(await pane.getByText('entry').isVisible(), true);
  },
};
