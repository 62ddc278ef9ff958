// Takes the article out of a page: null, or its title and its blocks, each a pair of the lowercase
// name of its element and its visible text.
(() => {
    // A page can put elements of its own, by their names, in the place of what a document has.
    // So everything is taken from where documents have it.
    const member = name => Reflect.get(Document.prototype, name, document);
    const first = selectors => member('querySelector').call(document, selectors);
    const all = selectors => member('querySelectorAll').call(document, selectors);

    const score = el => {
        let units = 0;
        for (const p of el.querySelectorAll('p')) units += p.innerText.length;
        return units;
    };

    let root = first('article') || first('main');
    if (!root || score(root) < 600) {
        let best = member('body');
        let top = 0;
        for (const el of all('div, section')) {
            const s = score(el);
            if (s > top) {
                top = s;
                best = el;
            }
        }
        root = best;
    }
    if (score(root) < 600) return null;

    const out = [];
    for (const el of root.querySelectorAll('h1, h2, h3, p, li, blockquote')) {
        if (el.closest('nav, footer, aside, form, [role=navigation]')) continue;
        const t = el.innerText.trim();
        if (t.length > 1) out.push([el.tagName.toLowerCase(), t.slice(0, 4000)]);
    }
    const h1 = first('h1');
    return {
        title: h1 && h1.innerText.trim() || member('title'),
        blocks: out.slice(0, 600)
    };
})()
